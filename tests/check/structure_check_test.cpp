// Parts and usages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "check/check_text.h"
#include "splitter/small_inputs.h"

namespace Kessel::test {
namespace {

Lines lines_of(const std::string& records) {
  return checked(exchange_file(records));
}

/// A part of its own with the definition `#(number + 2)`.
std::string part(unsigned number) {
  const auto name = [&](unsigned i) { return "#" + std::to_string(number + i); };
  return name(0) + "=PRODUCT('','','',());\n" + name(1) + "=PRODUCT_DEFINITION_FORMATION('',''," +
         name(0) + ");\n" + name(2) + "=PRODUCT_DEFINITION('',''," + name(1) + ",$);\n";
}

std::string usage(unsigned number, const std::string& references,
                  const std::string& type = "NEXT_ASSEMBLY_USAGE_OCCURRENCE") {
  return "#" + std::to_string(number) + "=" + type + "('',''," + references + ");\n";
}

TEST(StructureCheck, NothingIsFoundInAnAssembly) {
  EXPECT_EQ(lines_of(std::string(BOX_WITH_LID)), Lines());
  // Several at the top get a root.
  EXPECT_EQ(lines_of(part(1) + part(11)), Lines());
}

TEST(StructureCheck, NoPart) {
  const Lines FOUND = {
      "warning no_part: There is nothing to split: no product definition leads to a product or a "
      "shape."};
  EXPECT_EQ(lines_of("#1=PRODUCT('','','',());\n"), FOUND);
  EXPECT_EQ(lines_of("#2=PRODUCT_DEFINITION('','',$,$);\n" + usage(3, "$")), FOUND);
}

TEST(StructureCheck, OnePart) {
  const std::string text = exchange_file(std::string(LID_ALONE) + usage(7, "#6"));
  EXPECT_EQ(checked(text),
            (Lines{place_of("#6=", text) +
                   "warning one_part #6: There is nothing to split: this is the only part."}));
}

TEST(StructureCheck, UsagesThatJoinNoParts) {
  const std::string parts = part(1) + part(11);
  const std::string place = "14@" + std::to_string(exchange_file(parts).size() - 26);
  const std::string MALFORMED = ": The usage does not refer to an assembly and a component.";
  EXPECT_EQ(lines_of(parts + usage(20, "#3")),
            (Lines{place + " warning unused_usage #20" + MALFORMED}));
  EXPECT_EQ(
      lines_of(parts + usage(20, "#3,#12", "ASSEMBLY_COMPONENT_USAGE")),
      (Lines{place + " warning unused_usage #20: The usage joins no two parts: #12 is none."}));
  EXPECT_EQ(
      lines_of(parts + usage(20, "#2,#13", "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE")),
      (Lines{place + " warning unused_usage #20: The usage joins no two parts: #2 is none."}));
  EXPECT_EQ(lines_of(parts + usage(20, "#3", "MAKE_FROM_USAGE_OPTION")), Lines());
}

TEST(StructureCheck, CycleOfAllPartsLeavesNoRoot) {
  const std::string text = exchange_file(CYCLE);
  EXPECT_EQ(checked(text),
            (Lines{"error no_root: Every part is a component of another one: there is no root, and "
                   "no file shows how the parts fit together.",
                   place_of("#3=", text) + "error usage_cycle #3: The part #3 and 1 other are "
                                           "components of each other in a circle."}));
}

TEST(StructureCheck, CycleBelowARoot) {
  const std::string text =
      exchange_file(part(1) + part(11) + part(21) + part(31) + usage(40, "#3,#13") +
                    usage(41, "#13,#23") + usage(42, "#23,#33") + usage(43, "#33,#13"));
  EXPECT_EQ(checked(text),
            (Lines{place_of("#13=", text) + "error usage_cycle #13: The part #13 and 2 others are "
                                            "components of each other in a circle."}));
}

TEST(StructureCheck, PartThatIsAComponentOfItself) {
  const std::string text = exchange_file(part(1) + part(11) + usage(20, "#13,#13"));
  EXPECT_EQ(checked(text),
            (Lines{place_of("#13=", text) +
                   "error usage_cycle #13: The part #13 is a component of itself."}));
}

TEST(StructureCheck, PartWithoutAName) {
  for (const char* definition :
       {"('','',#1,$)", "('','',#1)", "('','',#9,#1)", "('','',#6,#1);\n#6=A(#9)"}) {
    const std::string text = exchange_file(part(1) + "#5=PRODUCT_DEFINITION" + definition + ";\n");
    EXPECT_THAT(checked(text),
                testing::Contains(place_of("#5=", text) +
                                  "error part_without_name #5: The part #5 leads to no product "
                                  "after which its file could be named; the file cannot be "
                                  "written."));
  }
}

}  // namespace
}  // namespace Kessel::test
