// References to instances that are not there, and in circles.
#include <gtest/gtest.h>

#include <string>

#include "check/check_text.h"
#include "splitter/small_inputs.h"

namespace Kessel::test {
namespace {

/// What is found when these records stand behind a box with a lid, without the offsets.
Lines found_in(const std::string& records) {
  Lines lines;
  for (const Finding& finding : findings_in(exchange_file(std::string(BOX_WITH_LID) + records))) {
    lines.push_back(describe(finding));
    const std::size_t at = lines.back().find('@');
    if (at != std::string::npos) lines.back().erase(at, lines.back().find(' ') - at);
  }
  return lines;
}

// The first record behind the box with its lid stands in line 20.
TEST(ReferenceCheck, MissingInstances) {
  EXPECT_EQ(found_in("#20=A(#1,#21,#21);\n#22=A(#13);\n"),
            (Lines{"20:1 warning missing_instance #20: #20 refers to #21, which is not there.",
                   "21:1 warning missing_instance #22: #22 refers to #13, which is not there."}));
  EXPECT_EQ(
      found_in("#20=A((#30,#31),#1,#30);\n#21=A(#30,#31,#32);\n#22=A(#30,#31,#32,#33);\n"),
      (Lines{"20:1 warning missing_instance #20: #20 refers to #30 and #31, which are not "
             "there.",
             "21:1 warning missing_instance #21: #21 refers to #30, #31 and #32, which are not "
             "there.",
             "22:1 warning missing_instance #22: #22 refers to #30, #31 and 2 others, which "
             "are not there."}));
  EXPECT_EQ(found_in("#20=A(#4294967297,#0);\n"),
            (Lines{"20:1 warning missing_instance #20: #20 refers to #4294967297 and #0, which are "
                   "not there."}));
}

TEST(ReferenceCheck, NumbersInStringsAndCommentsAreNone) {
  EXPECT_EQ(found_in("#20=A('#30 ;',/* #31; */#1);\n"), Lines());
}

TEST(ReferenceCheck, NumbersOfSixtyFourBits) {
  EXPECT_EQ(found_in("#18446744073709551615=A(#18446744073709551614);\n"),
            (Lines{"20:1 warning missing_instance #18446744073709551615: #18446744073709551615 "
                   "refers to #18446744073709551614, which is not there."}));
}

TEST(ReferenceCheck, AnchorsAndReferencesOfOtherSections) {
  EXPECT_EQ(checked("ISO-10303-21;\nHEADER;\nENDSEC;\nANCHOR;\n<top>=#30;\n<box>=#3;\nENDSEC;\n"
                    "REFERENCE;\n#9=<http://example.org/other.stp#lid>;\nENDSEC;\nDATA;\n" +
                    std::string(BOX_WITH_LID).replace(BOX_WITH_LID.find("#9="), 3, "#19=") +
                    "#20=A(#9);\nENDSEC;\nEND-ISO-10303-21;\n"),
            (Lines{"5:1@38 warning missing_instance: This refers to #30, which is not there."}));
}

TEST(ReferenceCheck, TwentyAreListedAndTheOthersCounted) {
  std::string records;
  for (int i = 0; i < 100; ++i) records += "#" + std::to_string(100 + i) + "=A(#99);\n";
  const Lines found = found_in(records);
  ASSERT_EQ(found.size(), 21u);
  EXPECT_EQ(found[19],
            "39:1 warning missing_instance #119: #119 refers to #99, which is not there.");
  EXPECT_EQ(found[20],
            "40:1 warning missing_instance #120 x80: And 80 more like the 20 that are listed: #120 "
            "refers to #99, which is not there.");
}

TEST(ReferenceCheck, Cycles) {
  EXPECT_EQ(found_in("#20=A(#20);\n"),
            (Lines{"20:1 warning reference_cycle #20: #20 refers to itself."}));
  EXPECT_EQ(
      found_in("#21=A(#20);\n#20=B(#21,#1);\n#22=C(#20,#21);\n"),
      (Lines{"20:1 warning reference_cycle #21: #21 and 1 other record refer to each other in a "
             "circle."}));
  EXPECT_EQ(
      found_in("#20=A(#21);\n#21=B(#22,#22);\n#22=C(#20,#22);\n#23=A(#24);\n#24=A(#23);\n"),
      (Lines{"20:1 warning reference_cycle #20: #20 and 2 other records refer to each other in "
             "a circle.",
             "23:1 warning reference_cycle #23: #23 and 1 other record refer to each other in a "
             "circle."}));
}

}  // namespace
}  // namespace Kessel::test
