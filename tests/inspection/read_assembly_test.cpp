// The product structure of exchange files, as plain data.
#include <gtest/gtest.h>

#include <string>

#include "inspection/products.h"
#include "kessel/assembly.h"
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
            "#3 box [box] assembly #1_part.stp ×1: #6×1\n"
            "#6 lid [lid] part #4_part.stp ×1:\n"
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
            "#3 a [a] assembly #1_part.stp ×1: #23×2 #13×1\n"
            "#13 b [b] assembly #11_part.stp ×1: #23×1\n"
            "#23 c [c] part #21_part.stp ×3:\n"
            "root #3\n"
            "depth 3\n");
}

TEST(ReadAssembly, AssemblyWithASolidHasBodiesOneWithAPlacementHasNone) {
  const std::string records = product(1, "'a','a',''") + product(11, "'b','b',''") +
                              product(21, "'c','c',''") + usage(30, 3, 13) + usage(31, 13, 23);
  EXPECT_EQ(text_of(assembly_in(records + shape(40, 13, true))),
            "#3 a [a] assembly #1_part.stp ×1: #13×1\n"
            "#13 b [b] assembly_with_bodies #11_part.stp ×1: #23×1\n"
            "#23 c [c] part #21_part.stp ×1:\n"
            "root #3\n"
            "depth 3\n");
  EXPECT_EQ(assembly_in(records + shape(40, 13, false)).parts[1].role, PartRole::assembly);
}

TEST(ReadAssembly, SeveralTopsGetAGeneratedRoot) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                product(21, "'c','c',''") + usage(30, 3, 13))),
            "#3 a [a] assembly #1_part.stp ×1: #13×1\n"
            "#13 b [b] part #11_part.stp ×1:\n"
            "#23 c [c] part #21_part.stp ×1:\n"
            "#0  [] assembly Root.stp ×1: #3×1 #23×1\n"
            "root #0\n"
            "depth 2\n");
}

TEST(ReadAssembly, TopWithBodiesGetsAGeneratedRootAboveIt) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                usage(30, 3, 13) + shape(40, 3, true))),
            "#3 a [a] assembly_with_bodies #1_part.stp ×1: #13×1\n"
            "#13 b [b] part #11_part.stp ×1:\n"
            "#0  [] assembly Root.stp ×1: #3×1\n"
            "root #0\n"
            "depth 2\n");
}

TEST(ReadAssembly, OnePartAloneIsTheRootAndGetsNoFile) {
  EXPECT_EQ(text_of(assembly_in(std::string(LID_ALONE))),
            "#6 lid [lid] part  ×1:\n"
            "root #6\n"
            "depth 1\n");
}

TEST(ReadAssembly, FileWithoutParts) {
  EXPECT_EQ(text_of(assembly_in("#1=PRODUCT('lid','lid','',());\n")), "depth 0\n");
  EXPECT_EQ(text_of(assembly_in("")), "depth 0\n");
}

TEST(ReadAssembly, PartsThatContainEachOther) {
  EXPECT_EQ(text_of(assembly_in(std::string(CYCLE))),
            "#3 hen [hen] assembly #1_part.stp ×1: #6×1\n"
            "#6 egg [egg] assembly #4_part.stp ×1: #3×1!\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, CycleBesideTheRootIsEnteredToo) {
  EXPECT_EQ(text_of(assembly_in(std::string(CYCLE) + product(11, "'a','a',''") +
                                product(21, "'b','b',''") + usage(30, 13, 23))),
            "#3 hen [hen] assembly #1_part.stp ×1: #6×1\n"
            "#6 egg [egg] assembly #4_part.stp ×1: #3×1!\n"
            "#13 a [a] assembly #11_part.stp ×1: #23×1\n"
            "#23 b [b] part #21_part.stp ×1:\n"
            "root #13\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, PartWithoutProductHasNoNames) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'box','box',''") +
                                "#6=PRODUCT_DEFINITION('d','',#5,#1);\n" + usage(7, 3, 6))),
            "#3 box [box] assembly #1_part.stp ×1: #6×1\n"
            "#6  [] part  ×1:\n"
            "root #3\n"
            "depth 2\n");
}

TEST(ReadAssembly, MappedItemIsCalledLikeTheRepresentationThatItShows) {
  const std::string mapped =
      "#40=REPRESENTATION_MAP(#41,#42);\n"
      "#41=AXIS2_PLACEMENT_3D('',$,$,$);\n";
  const std::string item = "#39=MAPPED_ITEM('item',#40,#41);\n";
  const std::string others = product(1, "'a','a',''") + item + mapped;
  EXPECT_EQ(assembly_in(others + "#42=ADVANCED_BREP_SHAPE_REPRESENTATION('it''s',(#41),'x');\n")
                .parts[1]
                .name,
            "it's");
  EXPECT_EQ(text_of(assembly_in(others + "#42=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#41),$);\n")),
            "#3 a [a] part #1_part.stp ×1:\n"
            "#39 item [] part #41_part.stp ×1:\n"
            "#0  [] assembly Root.stp ×1: #3×1 #39×1\n"
            "root #0\n"
            "depth 1\n");
}

TEST(ReadAssembly, SecondFileOfAProductIsNumberedAsInASplit) {
  EXPECT_EQ(text_of(assembly_in(product(1, "'a','a',''") + product(11, "'b','b',''") +
                                "#4=PRODUCT_DEFINITION('other view','',#2,$);\n" +
                                usage(30, 13, 3) + usage(31, 13, 4))),
            "#3 a [a] part #1_part.stp ×1:\n"
            "#4 a [a] part #1_part_(2)_.stp ×1:\n"
            "#13 b [b] assembly #11_part.stp ×1: #3×1 #4×1\n"
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

TEST(ReadAssembly, ReferenceBeyondTheStoreEndsItAsItEndsASplit) {
  const ScratchFolder folder;
  const auto in =
      folder.write("in.stp", exchange_file("#3=PRODUCT_DEFINITION('d','',#2000000,$);\n"));
  try {
    read_assembly(in);
    ADD_FAILURE() << "no exception";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid vector subscript");
  }
}

TEST(ReadAssembly, FileThatCannotBeOpened) {
  try {
    read_assembly("nowhere/in.stp");
    ADD_FAILURE() << "no exception";
  } catch (const std::invalid_argument& error) {
    EXPECT_STREQ(error.what(), "Failed to open input file.");
  }
}

}  // namespace
}  // namespace Kessel::test
