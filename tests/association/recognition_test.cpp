// Where parts start from: their own definitions.
#include <gtest/gtest.h>

#include "association/associate.h"
#include "association/numbers_text.h"
#include "structure/process_parts.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

// Three definitions, each of a product of its own.
const std::string DEFINITIONS =
    "#1=FORMATION(#2);\n"
    "#2=PRODUCT('','','',(#2));\n"
    "#3=PRODUCT_DEFINITION('','',#1);\n"
    "#13=PRODUCT_DEFINITION('','',#1);\n"
    "#23=PRODUCT_DEFINITION('','',#1);\n";

/// The numbers of all records after recognition.
std::string recognise(const Store& file) {
  EXPECT_EQ(printed_by([&] { initiate_recognition(file); }), "");
  return numbers_of(file);
}

TEST(Recognition, GeneratedRootsFileNumbersAllPartsInListOrderAndLeavesAreNumberOneInTheirs) {
  EXPECT_EQ(recognise(*read_structure(DEFINITIONS)),
            "#1: \n"
            "#2: \n"
            "#3: #3=1 root=1\n"
            "#13: #13=1 root=2\n"
            "#23: #23=1 root=3\n"
            "root: root=4\n"
            "last: #3=1 #13=1 #23=1 root=4\n");
}

TEST(Recognition, AssembliesAreNotEnteredIntoTheirOwnFile) {
  EXPECT_EQ(
      recognise(*read_structure(DEFINITIONS + "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#13,#3);\n"
                                              "#31=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#23);\n")),
      "#1: \n"
      "#2: \n"
      "#3: #13=1\n"
      "#13: #13=2\n"
      "#23: #13=3 #23=1\n"
      "#30: \n"
      "#31: \n"
      "last: #3=0 #13=3 #23=1\n");
}

TEST(Recognition, AssemblyWithGeometryIsALeaf) {
  EXPECT_EQ(
      recognise(*read_structure(DEFINITIONS + "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#13);\n"
                                              "#31=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#13,#23);\n"
                                              "#40=SHAPE_DEFINITION_REPRESENTATION(#13,#41);\n"
                                              "#41=SHAPE_REPRESENTATION('',(#42));\n"
                                              "#42=POINT();\n")),
      "#1: \n"
      "#2: \n"
      "#3: #3=1\n"
      "#13: #3=2 #13=1\n"
      "#23: #3=3 #23=1\n"
      "#30: \n"
      "#31: \n"
      "#40: \n"
      "#41: \n"
      "#42: \n"
      "last: #3=3 #13=1 #23=1\n");
}

TEST(Recognition, PartThatIsListedTwiceLeavesAGap) {
  const auto file = read_structure(DEFINITIONS);
  std::vector<Part*>& parts = file->parts;
  parts.insert(parts.begin() + 1, parts.front());
  initiate_recognition(*file);
  EXPECT_EQ(holders_of(*file, *file->at(3)), "#3=1 root=1");
  EXPECT_EQ(holders_of(*file, *file->at(13)), "#13=1 root=3");
  EXPECT_EQ(holders_of(*file, *file->at(23)), "#23=1 root=4");
  EXPECT_EQ(holders_of(*file, *file->root), "root=5");
  EXPECT_EQ(last_numbers_of(*file), "#3=2 #3=2 #13=1 #23=1 root=5");
}

TEST(Recognition, WithoutARootOnlyLeavesAreEntered) {
  // #3 and #13 are each other's components; #23, a component of both, has none.
  const auto file = read_records(DEFINITIONS +
                                 "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#13);\n"
                                 "#31=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#13,#3);\n"
                                 "#32=NEXT_ASSEMBLY_USAGE_OCCURRENCE('',#3,#23);\n");
  EXPECT_EQ(printed_by([&] { process_parts(*file, refuse_to_decode); }),
            "No root part found. It implies not part in the file or a cyclic part tree.\n"
            "Stopping the algorithm.\n");
  EXPECT_EQ(recognise(*file),
            "#1: \n#2: \n#3: \n#13: \n#23: #23=1\n#30: \n#31: \n#32: \n"
            "last: #3=0 #13=0 #23=1\n");
}

TEST(Recognition, OnlyPartOfAFileIsEnteredIntoItsOwnFile) {
  const auto file = read_records(
      "#1=PRODUCT('','','',());\n"
      "#3=PRODUCT_DEFINITION('','',#1);\n");
  printed_by([&] { process_parts(*file, refuse_to_decode); });
  EXPECT_EQ(recognise(*file), "#1: \n#3: #3=1\nlast: #3=1\n");
}

TEST(Recognition, FileWithoutPartsHasNothingToEnter) {
  const auto file = read_records("#1=PRODUCT('','','',());\n");
  EXPECT_EQ(recognise(*file), "#1: \nlast: \n");
}

}  // namespace
}  // namespace Kessel::test
