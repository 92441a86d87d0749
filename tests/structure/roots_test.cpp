// The top of the product tree, the generated root and "roots.txt".
#include <gtest/gtest.h>

#include <filesystem>

#include "splitter/root_list.h"
#include "structure/literal_file.h"
#include "structure/process_parts.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

// Three products with a definition each.
const std::string PRODUCTS =
    "#1=PRODUCT('a','a','',());\n"
    "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
    "#3=PRODUCT_DEFINITION('','',#2,$);\n"
    "#11=PRODUCT('b','b','',());\n"
    "#12=PRODUCT_DEFINITION_FORMATION('','',#11);\n"
    "#13=PRODUCT_DEFINITION('','',#12,$);\n"
    "#21=PRODUCT('c','c','',());\n"
    "#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n"
    "#23=PRODUCT_DEFINITION('','',#22,$);\n";

/// A usage of `child` in `parent`.
std::string usage(int number, int parent, int child) {
  return "#" + std::to_string(number) + "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#" +
         std::to_string(parent) + ",#" + std::to_string(child) + ",$);\n";
}

void find_structure(Store& file) {
  process_parts(file, refuse_to_decode);
  if (file.root != nullptr) list_root(file);
}

/// What the structure passes leave for one input.
struct Outcome {
  explicit Outcome(const std::string& data) : file(read_records(data)) {
    Part::free_statics();
    messages = printed_by([&] { find_structure(*file); });
    if (std::filesystem::exists("roots.txt")) roots_txt = read_file("roots.txt");
  }
  std::string root() const { return file->root == nullptr ? "none" : name_of(*file, file->root); }

  ScratchFolder folder;
  std::unique_ptr<Store> file;
  std::string messages;
  std::string roots_txt = "no file";
};

TEST(Roots, SingleAssemblyAtTheTopIsTheRoot) {
  const Outcome outcome(PRODUCTS + usage(30, 13, 3) + usage(31, 13, 23));
  EXPECT_EQ(outcome.root(), "#13");
  EXPECT_EQ(parts_of(*outcome.file), "#3 #13 #23 ");
  EXPECT_EQ(kinds_of(*outcome.file), "#3=2 #13=1 #23=2 ");
  EXPECT_EQ(outcome.roots_txt, "#11_part.stp\n");
  EXPECT_EQ(outcome.messages, "");
  EXPECT_FALSE(outcome.file->root_generated);
}

TEST(Roots, AssemblyWithPlacementsOnlyInItsShapeIsTheRoot) {
  const Outcome outcome(
      PRODUCTS + usage(30, 3, 13) + usage(31, 13, 23) +
      "#40=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
      "#41=SHAPE_DEFINITION_REPRESENTATION(#40,#42);\n"
      "#42=SHAPE_REPRESENTATION('',(#43),#44);\n"
      "#43=AXIS2_PLACEMENT_3D('',#1,#1,#1);\n"
      "#44=(GEOMETRIC_REPRESENTATION_CONTEXT(3)REPRESENTATION_CONTEXT('',''));\n");
  EXPECT_EQ(outcome.root(), "#3");
  EXPECT_EQ(kinds_of(*outcome.file), "#3=1 #13=1 #23=2 ");
  EXPECT_EQ(outcome.roots_txt, "#1_part.stp\n");
}

TEST(Roots, AssemblyWithGeometryAtTheTopGetsARootAboveIt) {
  const Outcome outcome(PRODUCTS + usage(30, 3, 13) + usage(31, 13, 23) +
                        "#40=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
                        "#41=SHAPE_DEFINITION_REPRESENTATION(#40,#42);\n"
                        "#42=SHAPE_REPRESENTATION('',(#43));\n"
                        "#43=MANIFOLD_SOLID_BREP('',#1);\n");
  EXPECT_EQ(outcome.root(), "root");
  EXPECT_EQ(kinds_of(*outcome.file), "#3=2 #13=1 #23=2 root=1 ");
  EXPECT_EQ(outcome.roots_txt, "Root.stp\n");
  EXPECT_EQ(outcome.messages, "");
}

TEST(Roots, SingleTopWithoutComponentsGetsARootAboveIt) {
  // #13 and #23 are each other's components.
  const Outcome outcome(PRODUCTS + usage(30, 13, 23) + usage(31, 23, 13));
  EXPECT_EQ(kinds_of(*outcome.file), "#3=2 #13=1 #23=1 root=1 ");
  EXPECT_EQ(outcome.roots_txt, "Root.stp\n");
}

TEST(Roots, TwoAssembliesAtTheTopGetARootAboveThem) {
  const Outcome outcome(PRODUCTS + usage(30, 3, 23) + usage(31, 13, 23));
  EXPECT_EQ(outcome.root(), "root");
  EXPECT_EQ(parts_of(*outcome.file), "#3 #13 #23 root ");
  EXPECT_EQ(kinds_of(*outcome.file), "#3=1 #13=1 #23=2 root=1 ");
  EXPECT_EQ(outcome.roots_txt, "Root.stp\n");
  EXPECT_EQ(outcome.messages, "");
}

TEST(Roots, PartsWithoutAnyLinksGetARootAboveThem) {
  const Outcome outcome(PRODUCTS);
  EXPECT_EQ(kinds_of(*outcome.file), "#3=2 #13=2 #23=2 root=1 ");
  EXPECT_EQ(outcome.roots_txt, "Root.stp\n");
}

TEST(Roots, GeneratedRootStandsForNoRecord) {
  const Outcome outcome(PRODUCTS);
  const Part* root = outcome.file->root;
  ASSERT_EQ(root, outcome.file->parts.back());
  EXPECT_TRUE(outcome.file->root_generated);
  EXPECT_EQ(root->type(), "PRODUCT_DEFINITION");
  EXPECT_EQ(root->path, "Root.stp");
  EXPECT_EQ(root->part_kind, 1u);
  EXPECT_EQ(root->list_position, 3u);
  EXPECT_EQ(root->last_instance_number, 0u);
  EXPECT_FALSE(root->refer_any());
  EXPECT_TRUE(root->part_numbers.empty());
  EXPECT_TRUE(root->children.empty());
  EXPECT_TRUE(root->parents.empty());
  EXPECT_EQ(outcome.file->get("PRODUCT_DEFINITION").size(), 3u);
  EXPECT_FALSE(Part::_filenames.contains("Root"));
  EXPECT_FALSE(Part::_filenames.contains("Root.stp"));
  EXPECT_EQ(Part::_filenames.size(), 3u);
}

TEST(Roots, TreeWhosePartsAllHaveParentsHasNoRoot) {
  const Outcome outcome(PRODUCTS + usage(30, 3, 13) + usage(31, 13, 23) + usage(32, 23, 3));
  EXPECT_EQ(outcome.messages,
            "No root part found. It implies not part in the file or a cyclic part tree.\n"
            "Stopping the algorithm.\n");
  EXPECT_EQ(outcome.root(), "none");
  EXPECT_EQ(outcome.roots_txt, "no file");
  EXPECT_EQ(kinds_of(*outcome.file), "#3=1 #13=1 #23=1 ");
  EXPECT_EQ(paths_of(*outcome.file), "#3=#1_part.stp #13=#11_part.stp #23=#21_part.stp ");
}

TEST(Roots, PartThatIsItsOwnComponentIsNoRoot) {
  const Outcome outcome(PRODUCTS + usage(30, 3, 3) + usage(31, 13, 23));
  EXPECT_EQ(outcome.root(), "#13");
  EXPECT_EQ(kinds_of(*outcome.file), "#3=1 #13=1 #23=2 ");
}

TEST(Roots, OnlyPartOfAFileIsNeitherClassifiedNorNamed) {
  const Outcome outcome(
      "#1=PRODUCT('a','a','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('','',#2,$);\n"
      "#4=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#3);\n"
      "#5=NEXT_ASSEMBLY_USAGE_OCCURRENCE('');\n");
  EXPECT_EQ(outcome.messages,
            "Only one part was found in the file !\n"
            "Impossible to proceed with the splitting algorithm.\n");
  EXPECT_EQ(outcome.root(), "none");
  EXPECT_EQ(kinds_of(*outcome.file), "#3=0 ");
  EXPECT_EQ(paths_of(*outcome.file), "#3= ");
  EXPECT_TRUE(outcome.file->parts.front()->children.empty());
  EXPECT_EQ(outcome.roots_txt, "no file");
}

TEST(Roots, EarlierRootsFileIsReplaced) {
  const auto file = read_records(PRODUCTS);
  const ScratchFolder folder;
  folder.write("roots.txt", "a longer text of an earlier run\nin two lines\n");
  find_structure(*file);
  EXPECT_EQ(read_file("roots.txt"), "Root.stp\n");
}

TEST(Roots, RootsFileThatCannotBeWrittenIsNotReported) {
  const auto file = read_records(PRODUCTS);
  const ScratchFolder folder;
  std::filesystem::create_directory("roots.txt");
  EXPECT_EQ(printed_by([&] { find_structure(*file); }), "");
  EXPECT_EQ(parts_of(*file), "#3 #13 #23 root ");
}

}  // namespace
}  // namespace Kessel::test
