// The product structure of exchange files, as plain data.
#include <gtest/gtest.h>

#include <string>

#include "inspection/products.h"
#include "kessel/assembly.h"
#include "kessel/errors.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

Assembly assembly_in(const std::string& records) {
  const ScratchFolder folder;
  return read_assembly(folder.write("in.stp", exchange_file(records)));
}

/// One part in a line: "#record name [id] role file ×total: component×count ...", components by
/// their record, "!" behind those that close a cycle.
std::string text_of(const Assembly& assembly) {
  constexpr const char* ROLES[] = {"part", "assembly", "assembly_with_bodies"};
  std::string text;
  for (const PartInfo& part : assembly.parts) {
    text += "#" + std::to_string(part.record) + " " + part.name + " [" + part.id + "] " +
            ROLES[static_cast<int>(part.role)] + " " + part.file.string() + " ×" +
            std::to_string(part.total) + ":";
    for (const PartUse& use : part.components) {
      text += " #" + std::to_string(assembly.parts[use.part].record) + "×" +
              std::to_string(use.count) + (use.closes_cycle ? "!" : "");
    }
    text += '\n';
  }
  for (const std::size_t root : assembly.roots) {
    text += "root #" + std::to_string(assembly.parts[root].record) + '\n';
  }
  return text + "depth " + std::to_string(assembly.depth) + '\n';
}

TEST(ReadAssembly, BoxWithLid) {
  EXPECT_EQ(text_of(assembly_in(std::string(BOX_WITH_LID))),
            "#3 box [box] assembly box.stp ×1: #6×1\n"
            "#6 lid [lid] part lid.stp ×1:\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, ProductsTextsAreDecoded) {
  const Assembly assembly =
      assembly_in(product(1, "'No. 7','it''s \\X2\\30CD30B8\\X0\\','caf\\X\\E9'") +
                  product(11, "'','a\nb',$") + usage(20, 3, 13));
  ASSERT_EQ(assembly.parts.size(), 2u);
  EXPECT_EQ(assembly.parts[0].id, "No. 7");
  EXPECT_EQ(assembly.parts[0].name, "it's ネジ");
  EXPECT_EQ(assembly.parts[0].description, "café");
  EXPECT_EQ(assembly.parts[1].id, "");
  EXPECT_EQ(assembly.parts[1].name, "ab");
  EXPECT_EQ(assembly.parts[1].description, "");
}

TEST(ReadAssembly, ComponentsStandInTheOrderOfTheirFirstUse) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                product(21, "'c','c',''") + usage(30, 3, 23) + usage(31, 3, 13) +
                                usage(32, 3, 23) + usage(33, 13, 23))),
            "#3 a [a] assembly a.stp ×1: #23×2 #13×1\n"
            "#13 b [b] assembly b.stp ×1: #23×1\n"
            "#23 c [c] part c.stp ×3:\n"
            "root #3\n"
            "depth 3\n");
}

TEST(ReadAssembly, AssemblyWithASolidHasBodiesOneWithAPlacementHasNone) {
  const std::string records = product(1, "'a','a',''") + product(11, "'b','b',''") +
                              product(21, "'c','c',''") + usage(30, 3, 13) + usage(31, 13, 23);
  EXPECT_EQ(text_of(assembly_in(records + shape(40, 13, true))),
            "#3 a [a] assembly a.stp ×1: #13×1\n"
            "#13 b [b] assembly_with_bodies b.stp ×1: #23×1\n"
            "#23 c [c] part c.stp ×1:\n"
            "root #3\n"
            "depth 3\n");
  EXPECT_EQ(assembly_in(records + shape(40, 13, false)).parts[1].role, PartRole::assembly);
}

TEST(ReadAssembly, SeveralTopsGetAGeneratedRoot) {
  EXPECT_EQ(
      text_of(assembly_in(product(1, "'a','a',''") + product(11, "'b','b',''") +
                          product(21, "'c','c',''") + usage(30, 3, 13) + shape(40, 23, true))),
      "#3 a [a] assembly a.stp ×1: #13×1\n"
      "#13 b [b] part b.stp ×1:\n"
      "#23 c [c] part c.stp ×1:\n"
      "#0  [] assembly Root.stp ×1: #3×1 #23×1\n"
      "root #0\n"
      "depth 2\n");
}

TEST(ReadAssembly, TopMayHaveBodiesOfItsOwn) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                usage(30, 3, 13) + shape(40, 3, true))),
            "#3 a [a] assembly_with_bodies a.stp ×1: #13×1\n"
            "#13 b [b] part b.stp ×1:\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, OnePartAloneIsTheRootAndIsCopied) {
  EXPECT_EQ(text_of(assembly_in(std::string(LID_ALONE) + shape(10, 6, true))),
            "#6 lid [lid] part lid.stp ×1:\n"
            "root #6\n"
            "depth 1\n");
}

TEST(ReadAssembly, FileWithoutParts) {
  EXPECT_EQ(text_of(assembly_in("#1=PRODUCT('lid','lid','',());\n")), "depth 0\n");
  EXPECT_EQ(text_of(assembly_in("")), "depth 0\n");
}

// Whatever a definition is of: without a shape and a place in the structure it is no part.
TEST(ReadAssembly, WhatHasNeitherShapeNorPlaceIsNoPart) {
  const std::string box = text_of(assembly_in(std::string(BOX_WITH_LID)));
  const std::string OTHERS[] = {
      product(21, "'m','Titanium','material'") +
          "#30=MAKE_FROM_USAGE_OPTION('','','',#6,#23,1,'',$);\n",
      "#21=DOCUMENT('d','drawing','',#22);\n#22=DOCUMENT_TYPE('');\n" +
          product(23, "'d','drawing',''") +
          "#30=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('','',#24,$,(#21));\n",
      product(21, "'v','front view',''") + "#30=PROPERTY_DEFINITION('','',#23);\n" +
          "#31=PROPERTY_DEFINITION_REPRESENTATION(#30,#32);\n" +
          "#32=DRAUGHTING_MODEL('front',(#33),$);\n#33=MAPPED_ITEM('',#34,#35);\n" +
          "#34=REPRESENTATION_MAP(#35,#10);\n#35=AXIS2_PLACEMENT_3D('',$,$,$);\n",
      "#33=MAPPED_ITEM('item',#34,#35);\n#34=REPRESENTATION_MAP(#35,#36);\n" +
          std::string("#35=AXIS2_PLACEMENT_3D('',$,$,$);\n") +
          "#36=ADVANCED_BREP_SHAPE_REPRESENTATION('mapped',(#35),#12);\n",
  };
  for (const std::string& other : OTHERS) {
    EXPECT_EQ(text_of(assembly_in(std::string(BOX_WITH_LID) + other)), box) << other;
  }
}

TEST(ReadAssembly, PartsThatContainEachOther) {
  EXPECT_EQ(text_of(assembly_in(std::string(CYCLE))),
            "#3 hen [hen] assembly hen.stp ×1: #6×1\n"
            "#6 egg [egg] assembly egg.stp ×1: #3×1!\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, CycleBesideATopIsAnotherTop) {
  EXPECT_EQ(text_of(assembly_in(std::string(CYCLE) + product(11, "'a','a',''") +
                                product(21, "'b','b',''") + usage(30, 13, 23))),
            "#3 hen [hen] assembly hen.stp ×1: #6×1\n"
            "#6 egg [egg] assembly egg.stp ×1: #3×1!\n"
            "#13 a [a] assembly a.stp ×1: #23×1\n"
            "#23 b [b] part b.stp ×1:\n"
            "#0  [] assembly Root.stp ×1: #3×1 #13×1\n"
            "root #0\n"
            "depth 2\n");
}

TEST(ReadAssembly, PartWithoutProductHasNoNames) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'box','box',''") +
                                "#6=PRODUCT_DEFINITION('d','',#5,#1);\n" + usage(7, 3, 6))),
            "#3 box [box] assembly box.stp ×1: #6×1\n"
            "#6  [] part part 6.stp ×1:\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, SecondFileOfAProductIsNumberedAsInASplit) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                "#4=PRODUCT_DEFINITION('other view','',#2,$);\n" +
                                usage(30, 13, 3) + usage(31, 13, 4))),
            "#3 a [a] part a.stp ×1:\n"
            "#13 b [b] assembly b.stp ×1: #3×1 #4×1\n"
            "#4 a [a] part a (2).stp ×1:\n"
            "root #13\n"
            "depth 2\n");
}

TEST(ReadAssembly, LadderOfSixtyLevelsStaysSmall) {
  std::string records;
  for (int i = 0; i <= 60; ++i) records += product(10 * i + 1, "'p','p',''");
  for (int i = 0; i < 60; ++i) {
    records += usage(1000 + 2 * i, 10 * i + 3, 10 * i + 13);
    records += usage(1001 + 2 * i, 10 * i + 3, 10 * i + 13);
  }
  const Assembly assembly = assembly_in(records);
  ASSERT_EQ(assembly.parts.size(), 61u);
  EXPECT_EQ(assembly.depth, 61u);
  EXPECT_EQ(assembly.parts.back().total, std::uint64_t{1} << 60);
}

TEST(ReadAssembly, SubAssembliesHaveNoFilesInLeanSplits) {
  const ScratchFolder folder;
  const auto in = folder.write(
      "in.stp", exchange_file(product(1, "'a','a',''") + product(11, "'b','b',''") +
                              product(21, "'c','c',''") + usage(30, 3, 13) + usage(31, 13, 23)));
  EXPECT_EQ(text_of(read_assembly(in, {.assemblies = AssemblyStyle::lean})),
            "#3 a [a] assembly a.stp ×1: #13×1\n"
            "#13 b [b] assembly  ×1: #23×1\n"
            "#23 c [c] part c.stp ×1:\n"
            "root #3\n"
            "depth 3\n");
}

TEST(ReadAssembly, FilesAreNamedAfterRecordsWhereTheSplitDoesSo) {
  const ScratchFolder folder;
  const auto in = folder.write("in.stp", exchange_file(BOX_WITH_LID));
  const Assembly assembly = read_assembly(in, {.names = NameStyle::record});
  EXPECT_EQ(assembly.parts[0].file, "#1_part.stp");
  EXPECT_EQ(assembly.parts[1].file, "#4_part.stp");
}

TEST(ReadAssembly, NumbersOfSixtyFourBits) {
  const std::string LARGEST = "18446744073709551615";
  EXPECT_EQ(
      text_of(assembly_in(product(1, "'a','a',''") + "#4294967296=PRODUCT('b','b','',());\n" + "#" +
                          LARGEST + "=PRODUCT_DEFINITION('','',#4294967297,$);\n" +
                          "#4294967297=PRODUCT_DEFINITION_FORMATION('','',#4294967296);\n" +
                          "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#" + LARGEST + ",$);\n")),
      "#3 a [a] assembly a.stp ×1: #" + LARGEST + "×1\n" + "#" + LARGEST +
          " b [b] part b.stp ×1:\n"
          "root #3\n"
          "depth 2\n");
}

// What only the standard's reading sees: texts with ";", comments, records on one line.
TEST(ReadAssembly, EveryLegalFileIsRead) {
  const ScratchFolder folder;
  const auto in = folder.write(
      "in.stp",
      "/* #1=PRODUCT('x','x','',()); */ISO-10303-21;HEADER;FILE_NAME('','',(),(),'','','');ENDSEC;"
      "DATA;#1=PRODUCT('a','bolt; M3','',());/* it's */#2=PRODUCT_DEFINITION_FORMATION('','',#1);"
      "#3=PRODUCT_DEFINITION('ENDSEC;','',/* #9 */#2,$);#4=PRODUCT('b','#5=A();','',());ENDSEC;"
      "DATA;#5=PRODUCT_DEFINITION_FORMATION('','',#4);#0006 = PRODUCT_DEFINITION ( '' , '' , #05 , "
      "$ ) ;\n#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#6,$);ENDSEC;END-ISO-10303-21;");
  EXPECT_EQ(text_of(read_assembly(in)),
            "#3 bolt; M3 [a] assembly bolt_ M3.stp ×1: #6×1\n"
            "#6 #5=A(); [b] part _5=A()_.stp ×1:\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, FileThatCannotBeOpened) {
  try {
    read_assembly("nowhere/in.stp");
    ADD_FAILURE() << "no exception";
  } catch (const InputError& error) {
    EXPECT_EQ(error.finding().kind, FindingKind::unreadable);
    EXPECT_EQ(error.path(), "nowhere/in.stp");
    EXPECT_STREQ(error.what(),
                 "nowhere/in.stp: The file cannot be opened: No such file or directory.");
  }
}

}  // namespace
}  // namespace Kessel::test
