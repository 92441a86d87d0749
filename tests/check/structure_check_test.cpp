// Parts and usages.
#include <gtest/gtest.h>

#include <string>

#include "check/check_text.h"
#include "splitter/small_inputs.h"

namespace Kessel::test {
namespace {

Lines lines_of(const std::string& records) {
  return checked(exchange_file(records));
}

/// A product with the definition `#(number + 2)` and a shape.
std::string part(unsigned number) {
  const auto name = [&](unsigned i) { return "#" + std::to_string(number + i); };
  return name(0) + "=PRODUCT('','','',());\n" + name(1) + "=PRODUCT_DEFINITION_FORMATION('',''," +
         name(0) + ");\n" + name(2) + "=PRODUCT_DEFINITION('',''," + name(1) + ",$);\n" + name(3) +
         "=PRODUCT_DEFINITION_SHAPE('',''," + name(2) + ");\n" + name(4) +
         "=SHAPE_DEFINITION_REPRESENTATION(" + name(3) + "," + name(5) + ");\n" + name(5) +
         "=SHAPE_REPRESENTATION('',(" + name(6) + "),$);\n" + name(6) +
         "=MANIFOLD_SOLID_BREP('',$);\n";
}

std::string usage(unsigned number, const std::string& references,
                  const std::string& type = "NEXT_ASSEMBLY_USAGE_OCCURRENCE") {
  return "#" + std::to_string(number) + "=" + type + "('','',''," + references + ");\n";
}

TEST(StructureCheck, NothingIsFoundInAnAssembly) {
  EXPECT_EQ(lines_of(std::string(BOX_WITH_LID)), Lines());
  // Several at the top get a root.
  EXPECT_EQ(lines_of(part(1) + part(11)), Lines());
}

TEST(StructureCheck, NoPart) {
  const Lines FOUND = {
      "warning no_part: There is nothing to split: no product definition has a shape or a "
      "component."};
  EXPECT_EQ(lines_of(""), FOUND);
  EXPECT_EQ(lines_of(std::string(LID_ALONE)), FOUND);
}

// A split copies it.
TEST(StructureCheck, NothingIsFoundInOnePart) {
  EXPECT_EQ(checked(exchange_file(part(4))), Lines());
}

TEST(StructureCheck, UsagesThatJoinNoParts) {
  const std::string parts = part(1) + part(11);
  const std::string place = "22:1@" + std::to_string(exchange_file(parts).size() - 26);
  const Lines FOUND = {place +
                       " warning unused_usage #20: The usage joins no two product definitions."};
  EXPECT_EQ(lines_of(parts + usage(20, "#3")), FOUND);
  EXPECT_EQ(lines_of(parts + usage(20, "#3,#12", "ASSEMBLY_COMPONENT_USAGE")), FOUND);
  EXPECT_EQ(lines_of(parts + usage(20, "#2,#13", "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE")), FOUND);
  EXPECT_EQ(lines_of(parts + usage(20, "#3", "MAKE_FROM_USAGE_OPTION")), Lines());
}

TEST(StructureCheck, UsageThatClosesACircle) {
  const std::string text = exchange_file(CYCLE);
  EXPECT_EQ(checked(text), (Lines{place_of("#8=", text) +
                                  "warning usage_cycle #8: The component leads back to #6, the "
                                  "assembly that it is used in."}));
}

TEST(StructureCheck, CircleBelowARoot) {
  const std::string text =
      exchange_file(part(1) + part(11) + part(21) + part(31) + usage(40, "#3,#13") +
                    usage(41, "#13,#23") + usage(42, "#23,#33") + usage(43, "#33,#13"));
  EXPECT_EQ(checked(text), (Lines{place_of("#43=", text) +
                                  "warning usage_cycle #43: The component leads back to #33, the "
                                  "assembly that it is used in."}));
}

TEST(StructureCheck, PartThatIsAComponentOfItself) {
  const std::string text = exchange_file(part(1) + part(11) + usage(20, "#13,#13"));
  EXPECT_EQ(checked(text), (Lines{place_of("#20=", text) +
                                  "warning usage_cycle #20: The component leads back to #13, the "
                                  "assembly that it is used in."}));
}

TEST(StructureCheck, PartWithoutAProduct) {
  EXPECT_EQ(lines_of(part(1) + "#8=PRODUCT_DEFINITION('','',#1,$);\n" + usage(20, "#3,#8")),
            Lines());
}

TEST(StructureCheck, FilesThatAreNotThere) {
  const ScratchFolder folder;
  const std::string records = std::string(BOX_WITH_LID) +
                              "#20=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
                              "#21=APPLIED_DOCUMENT_REFERENCE(#20,'',(#6));\n";
  const std::filesystem::path in = folder.write("in.stp", exchange_file(records));
  const std::vector<Finding> findings = check(in);
  ASSERT_EQ(findings.size(), 1u);
  EXPECT_EQ(describe(findings.front()),
            place_of("#20=", exchange_file(records)) +
                "warning missing_target #20: The file \"lid.stp\" that is referred to is not "
                "there.");
  folder.write("lid.stp", "");
  EXPECT_TRUE(check(in).empty());
}

}  // namespace
}  // namespace Kessel::test
