// Header and counts of exchange files.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "inspection/products.h"
#include "kessel/assembly.h"
#include "kessel/summary.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

Summary summary_of(const std::string& records) {
  const ScratchFolder folder;
  return read_summary(folder.write("in.stp", exchange_file(records)));
}

std::string types_of(const Summary& summary) {
  std::string text;
  for (const TypeCount& type : summary.types) {
    text += type.type + " " + std::to_string(type.records) + "\n";
  }
  return text;
}

TEST(ReadSummary, BoxWithLid) {
  const Summary summary = summary_of(std::string(BOX_WITH_LID));
  EXPECT_EQ(summary.header.name, "in.stp");
  EXPECT_EQ(summary.header.authors, std::vector<std::string>{"me"});
  EXPECT_EQ(summary.header.schemas, std::vector<std::string>{"AUTOMOTIVE_DESIGN"});
  EXPECT_EQ(summary.bytes, exchange_file(BOX_WITH_LID).size());
  EXPECT_EQ(summary.records, 12u);
  EXPECT_EQ(types_of(summary),
            "PRODUCT 2\n"
            "PRODUCT_DEFINITION 2\n"
            "PRODUCT_DEFINITION_FORMATION 2\n"
            "GEOMETRIC_REPRESENTATION_CONTEXT 1\n"
            "MANIFOLD_SOLID_BREP 1\n"
            "NEXT_ASSEMBLY_USAGE_OCCURRENCE 1\n"
            "PRODUCT_DEFINITION_SHAPE 1\n"
            "SHAPE_DEFINITION_REPRESENTATION 1\n"
            "SHAPE_REPRESENTATION 1\n");
  EXPECT_EQ(summary.parts, 1u);
  EXPECT_EQ(summary.assemblies, 1u);
  EXPECT_EQ(summary.assemblies_with_bodies, 0u);
  EXPECT_EQ(summary.depth, 2u);
}

TEST(ReadSummary, EveryRecordCountsAndThoseWithATypeUnderIt) {
  const Summary summary =
      summary_of("#1=A();\n#0=A();\n#2=();\nA();\n#x=A();\n#3=B();\n#1=A();\n#4=(A());\n");
  EXPECT_EQ(types_of(summary), "A 3\nB 1\n");
  EXPECT_EQ(summary.records, 5u);
}

TEST(ReadSummary, ManyTypesAreAllCounted) {
  std::string records;
  for (int i = 1; i <= 6000; ++i) records += record(i, "T" + std::to_string(i % 3000) + "()");
  const Summary summary = summary_of(records);
  EXPECT_EQ(summary.records, 6000u);
  ASSERT_EQ(summary.types.size(), 3000u);
  for (const TypeCount& type : summary.types) EXPECT_EQ(type.records, 2u) << type.type;
}

TEST(ReadSummary, LongComplexInstancesAreCountedUnderTheirKeywords) {
  const std::string points(200, '1');
  EXPECT_EQ(types_of(summary_of("#1=(B_SPLINE(" + points +
                                ") CURVE());\n#2=(B_SPLINE(2) CURVE());\n"
                                "#3=C();\n")),
            "B_SPLINE CURVE 2\nC 1\n");
}

TEST(ReadSummary, AGeneratedRootIsNeitherPartNorAssembly) {
  const Summary summary =
      summary_of(product(1, "'a','a',''") + product(11, "'b','b',''") + product(21, "'c','c',''") +
                 usage(30, 3, 13) + shape(40, 3, true) + shape(50, 23, true));
  EXPECT_EQ(summary.parts, 2u);
  EXPECT_EQ(summary.assemblies, 1u);
  EXPECT_EQ(summary.assemblies_with_bodies, 1u);
  EXPECT_EQ(summary.depth, 2u);
}

TEST(ReadSummary, UnitsOfTheContexts) {
  const Summary summary = summary_of(
      "#1=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2,#3))\n"
      "REPRESENTATION_CONTEXT('',''));\n"
      "#2=(CONVERSION_BASED_UNIT('INCH',#4)LENGTH_UNIT()NAMED_UNIT(#9));\n"
      "#3=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n"
      "#4=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#5);\n"
      "#5=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n");
  ASSERT_EQ(summary.length_units.size(), 1u);
  EXPECT_EQ(summary.length_units[0].name, "INCH");
  EXPECT_EQ(summary.length_units[0].factor, 0.0254);
  EXPECT_EQ(summary.length_units[0].contexts, 1u);
  ASSERT_EQ(summary.plane_angle_units.size(), 1u);
  EXPECT_EQ(summary.plane_angle_units[0].name, "radian");
}

TEST(ReadSummary, ContextThatIsThereTwiceCountsOnce) {
  const std::string context = record(1, "(GLOBAL_UNIT_ASSIGNED_CONTEXT((#2)))");
  const Summary summary =
      summary_of(context + context + record(2, "(LENGTH_UNIT()SI_UNIT($,.METRE.))"));
  ASSERT_EQ(summary.length_units.size(), 1u);
  EXPECT_EQ(summary.length_units[0].contexts, 1u);
}

TEST(ReadSummary, LinesOfOtherSectionsAreNoRecords) {
  const ScratchFolder folder;
  const Summary summary = read_summary(folder.write(
      "in.stp",
      "ISO-10303-21;\nHEADER;\nENDSEC;\nANCHOR;\n<a>=#1;\nENDSEC;\nREFERENCE;\n#9=<b.stp#b>;\n"
      "ENDSEC;\nDATA;\n#1=A(#9);\nENDSEC;\nDATA;\n#2=A();\nENDSEC;\nEND-ISO-10303-21;\n"));
  EXPECT_EQ(types_of(summary), "A 2\n");
  EXPECT_EQ(summary.records, 2u);
}

TEST(ReadSummary, HeaderMayBeginInTheFirstLine) {
  const ScratchFolder folder;
  const auto in = folder.write("in.stp",
                               "ISO-10303-21;HEADER;FILE_NAME('a','',(''),(''),'','','');\n"
                               "FILE_SCHEMA(('S'));ENDSEC;\nDATA;\nENDSEC;\nEND-ISO-10303-21;\n");
  const Summary summary = read_summary(in);
  EXPECT_EQ(summary.header.name, "a");
  EXPECT_EQ(summary.header.schemas, std::vector<std::string>{"S"});
  EXPECT_EQ(summary.records, 0u);
  EXPECT_EQ(summary.types.size(), 0u);
  EXPECT_EQ(summary.depth, 0u);
}

TEST(ReadSummary, FilesThatAreReferredTo) {
  const ScratchFolder folder;
  const std::string records = std::string(BOX_WITH_LID) +
                              "#20=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
                              "#21=APPLIED_DOCUMENT_REFERENCE(#20,'',(#6));\n"
                              "#22=DOCUMENT_FILE('box.stp','','',$,'',$);\n"
                              "#23=APPLIED_DOCUMENT_REFERENCE(#22,'',(#3));\n"
                              "#24=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
                              "#25=APPLIED_DOCUMENT_REFERENCE(#24,'',(#6));\n";
  folder.write("box.stp", "");
  const std::filesystem::path in = folder.write("in.stp", exchange_file(records));
  const Summary summary = read_summary(in);
  ASSERT_EQ(summary.references.size(), 2u);
  EXPECT_EQ(summary.references[0].name, "lid.stp");
  EXPECT_EQ(summary.references[0].references, 2u);
  EXPECT_FALSE(summary.references[0].is_there);
  EXPECT_EQ(summary.references[1].name, "box.stp");
  EXPECT_EQ(summary.references[1].references, 1u);
  EXPECT_TRUE(summary.references[1].is_there);
  const Assembly assembly = read_assembly(in);
  EXPECT_EQ(assembly.parts[0].external_file, "box.stp");
  EXPECT_EQ(assembly.parts[1].external_file, "lid.stp");
}

}  // namespace
}  // namespace Kessel::test
