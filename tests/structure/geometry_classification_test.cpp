// Which assemblies carry geometry of their own.
#include <gtest/gtest.h>

#include "structure/discovery.h"
#include "structure/links.h"
#include "structure/literal_file.h"
#include "structure/roots.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

// The assembly #3 with the component #13, and the definition #23 that is no part.
const std::string ASSEMBLY =
    "#1=PRODUCT('a','a','',());\n"
    "#3=PRODUCT_DEFINITION('','',#1,$);\n"
    "#13=PRODUCT_DEFINITION('','',#1,$);\n"
    "#23=PRODUCT_DEFINITION('');\n"
    "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#13,$);\n";

// The assembly's shape definition, and its representation #42, which `data` is to hold.
const std::string SHAPE =
    "#40=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
    "#41=SHAPE_DEFINITION_REPRESENTATION(#40,#42);\n";

/// A store with parts and links whose kinds are those that the links give.
std::unique_ptr<Store> linked(const std::string& data) {
  std::unique_ptr<Store> file = read_records(data);
  find_and_create_parts(*file);
  link_parts(*file);
  for (Part* part : file->parts) part->part_kind = part->children.empty() ? 2 : 1;
  return file;
}

/// The assembly with more records.
std::unique_ptr<Store> unclassified(const std::string& data) {
  std::unique_ptr<Store> file = linked(ASSEMBLY + data);
  EXPECT_EQ(kinds_of(*file), "#3=1 #13=2 ");
  return file;
}

/// The kinds after the step, which must print `messages`.
std::string classify(const std::string& data, const std::string& messages = "") {
  const auto file = unclassified(data);
  EXPECT_EQ(printed_by([&] { classify_by_geometry(*file); }), messages);
  return kinds_of(*file);
}

std::string exception_of(const std::string& data) {
  const auto file = unclassified(data);
  return out_of_range_text([&] { classify_by_geometry(*file); });
}

TEST(GeometryClassification, PlacementsAndContextsAreNoGeometry) {
  EXPECT_EQ(
      classify(SHAPE +
               "#42=SHAPE_REPRESENTATION('',(#43,#44,#43),#45,#46);\n"
               "#43=AXIS2_PLACEMENT_3D('',#1);\n"
               "#44=GEOMETRIC_REPRESENTATION_CONTEXT('',3);\n"
               "#45=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n"
               "#46=(PARAMETRIC_REPRESENTATION_CONTEXT()GEOMETRIC_REPRESENTATION_CONTEXT(2));\n"),
      "#3=1 #13=2 ");
}

TEST(GeometryClassification, AnItemOfAnyOtherTypeMakesTheAssemblyALeaf) {
  for (const std::string type :
       {"MANIFOLD_SOLID_BREP", "MAPPED_ITEM", "AXIS2_PLACEMENT_2D", "CARTESIAN_POINT",
        "REPRESENTATION_CONTEXT", "SHAPE_REPRESENTATION", "PRODUCT_DEFINITION"}) {
    SCOPED_TRACE(type);
    EXPECT_EQ(classify(SHAPE +
                       "#42=SHAPE_REPRESENTATION('',(#43,#44),#43);\n"
                       "#43=AXIS2_PLACEMENT_3D('');\n"
                       "#44=" +
                       type + "('');\n"),
              "#3=2 #13=2 ");
  }
}

TEST(GeometryClassification, TypeOfTheRepresentationDoesNotMatter) {
  EXPECT_EQ(classify(SHAPE + "#42=ANYTHING('',(#43));\n#43=POINT();\n"), "#3=2 #13=2 ");
}

TEST(GeometryClassification, OneRepresentationWithGeometryAmongSeveralIsEnough) {
  EXPECT_EQ(classify(SHAPE + "#42=SHAPE_REPRESENTATION('',(#44));\n"
                             "#43=SHAPE_REPRESENTATION('',(#45));\n"
                             "#44=POINT();\n"
                             "#45=AXIS2_PLACEMENT_3D('');\n"
                             "#46=SHAPE_DEFINITION_REPRESENTATION(#40,#43);\n"),
            "#3=2 #13=2 ");
}

TEST(GeometryClassification, LeafWithoutGeometryStaysALeaf) {
  EXPECT_EQ(classify("#40=PRODUCT_DEFINITION_SHAPE('','',#13);\n"
                     "#41=SHAPE_DEFINITION_REPRESENTATION(#40,#42);\n"
                     "#42=SHAPE_REPRESENTATION('',(#43));\n"
                     "#43=AXIS2_PLACEMENT_3D('');\n"),
            "#3=1 #13=2 ");
}

TEST(GeometryClassification, ItemsBelowTheItemsAreNotLookedAt) {
  EXPECT_EQ(classify(SHAPE + "#42=SHAPE_REPRESENTATION('',(#43));\n"
                             "#43=AXIS2_PLACEMENT_3D('',#44);\n"
                             "#44=POINT();\n"),
            "#3=1 #13=2 ");
}

TEST(GeometryClassification, DefinitionWithDocumentsAndMappedItemAreFoundToo) {
  for (const std::string type : {"PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS", "MAPPED_ITEM"}) {
    SCOPED_TRACE(type);
    const auto file = linked(ASSEMBLY + "#4=" + type +
                             "('',#1);\n"
                             "#31=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#4,#3);\n"
                             "#41=SHAPE_DEFINITION_REPRESENTATION(#4,#42);\n"
                             "#42=SHAPE_REPRESENTATION('',#43);\n"
                             "#43=POINT();\n");
    EXPECT_EQ(kinds_of(*file), "#3=1 #4=1 #13=2 ");
    classify_by_geometry(*file);
    EXPECT_EQ(kinds_of(*file), "#3=1 #4=2 #13=2 ");
  }
}

TEST(GeometryClassification, FirstDefinitionThatIsFoundCountsEvenIfItIsNoPart) {
  EXPECT_EQ(classify("#40=PRODUCT_DEFINITION_SHAPE('','',#23,#3);\n"
                     "#41=SHAPE_DEFINITION_REPRESENTATION(#40,#42);\n"
                     "#42=SHAPE_REPRESENTATION('',(#43));\n"
                     "#43=POINT();\n"),
            "#3=1 #13=2 ");
  EXPECT_EQ(classify("#40=PRODUCT_DEFINITION_SHAPE('','',#3,#23);\n"
                     "#41=SHAPE_DEFINITION_REPRESENTATION(#40,#42);\n"
                     "#42=SHAPE_REPRESENTATION('',(#43));\n"
                     "#43=POINT();\n"),
            "#3=2 #13=2 ");
}

TEST(GeometryClassification, ShapeThatLeadsToNoPartIsSkippedBeforeItsRepresentationIsLookedAt) {
  // Neither the missing reference 1 nor one beyond the store is noticed.
  for (const std::string definition : {"#1", "#23", "#999"}) {
    SCOPED_TRACE(definition);
    EXPECT_EQ(classify("#41=SHAPE_DEFINITION_REPRESENTATION(" + definition +
                       ");\n#42=SHAPE_DEFINITION_REPRESENTATION(" + definition + ",#1048576);\n"),
              "#3=1 #13=2 ");
  }
}

TEST(GeometryClassification, EmptySlotsAreNoGeometry) {
  EXPECT_EQ(classify(SHAPE), "#3=1 #13=2 ");
  EXPECT_EQ(
      classify(SHAPE + "#42=SHAPE_REPRESENTATION('',(#43,#44));\n#44=AXIS2_PLACEMENT_3D();\n"),
      "#3=1 #13=2 ");
  EXPECT_EQ(classify(SHAPE + "#42=SHAPE_REPRESENTATION('',(#43,#44));\n#44=POINT();\n"),
            "#3=2 #13=2 ");
}

TEST(GeometryClassification, NumberWithoutARecordUnderTheTypeIsPassedOver) {
  const auto file = unclassified("");
  file->add_type(70, "SHAPE_DEFINITION_REPRESENTATION");
  EXPECT_EQ(printed_by([&] { classify_by_geometry(*file); }), "");
  EXPECT_EQ(kinds_of(*file), "#3=1 #13=2 ");
}

TEST(GeometryClassification, MissingReferencesPrintTheirLine) {
  EXPECT_EQ(classify("#41=SHAPE_DEFINITION_REPRESENTATION();\n",
                     "Got an out of range in 'get_child' while fetching child nb 0\n"),
            "#3=1 #13=2 ");
  EXPECT_EQ(classify("#41=SHAPE_DEFINITION_REPRESENTATION(#3);\n",
                     "Got an out of range in 'get_child' while fetching child nb 1\n"),
            "#3=1 #13=2 ");
}

TEST(GeometryClassification, ReferencesBeyondTheStoreThrow) {
  EXPECT_EQ(exception_of("#41=SHAPE_DEFINITION_REPRESENTATION(#1048576,#42);\n"),
            "invalid vector subscript");
  EXPECT_EQ(exception_of("#41=SHAPE_DEFINITION_REPRESENTATION(#3,#1048576);\n"),
            "invalid vector subscript");
  EXPECT_EQ(exception_of(SHAPE + "#42=SHAPE_REPRESENTATION('',(#1048576));\n"),
            "invalid vector subscript");
}

TEST(GeometryClassification, ItemsBehindTheFirstGeometryAreNotLookedAt) {
  EXPECT_EQ(classify(SHAPE + "#42=SHAPE_REPRESENTATION('',(#43,#1048576));\n#43=POINT();\n"),
            "#3=2 #13=2 ");
}

}  // namespace
}  // namespace Kessel::test
