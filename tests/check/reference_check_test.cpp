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
            (Lines{"20 error missing_instance #20: #20 refers to #21, which is not there.",
                   "20 error missing_instance #20: #20 refers to #21, which is not there.",
                   "21 error missing_instance #22: #22 refers to #13, which is not there."}));
  EXPECT_EQ(found_in("#20=A(#1048575);\n"),
            (Lines{"20 error missing_instance #20: #20 refers to #1048575, which is not there."}));
}

TEST(ReferenceCheck, InstancesBeyondTheStore) {
  const std::string BEYOND =
      ", which is far beyond the highest number that is there; a split may fail over it.";
  EXPECT_EQ(found_in("#20=A(#1048576);\n"),
            (Lines{"20 error instance_beyond_store #20: #20 refers to #1048576" + BEYOND}));
  EXPECT_EQ(found_in("#20=A(#4294967295,#9999999);\n"),
            (Lines{"20 error instance_beyond_store #20: #20 refers to #4294967295" + BEYOND,
                   "20 error instance_beyond_store #20: #20 refers to #9999999" + BEYOND}));
  EXPECT_EQ(found_in("#20=A(#1048576);\n#1048577=A(#20);\n"),
            (Lines{"20 error missing_instance #20: #20 refers to #1048576, which is not there."}));
}

TEST(ReferenceCheck, StructureIsCheckedBehindAReferenceBeyondTheStore) {
  EXPECT_EQ(checked(exchange_file("#3=PRODUCT_DEFINITION('d','',#2000000,$);\n")),
            (Lines{"warning no_part: There is nothing to split: no product definition leads to a "
                   "product or a shape.",
                   "8@158 error instance_beyond_store #3: #3 refers to #2000000, which is far "
                   "beyond the highest number that is there; a split may fail over it."}));
}

// The second reading comes to the texts of such records as well.
TEST(ReferenceCheck, InstancesBeyondTheStoreInRecordsThatAreNotKept) {
  const auto beyond = [](const std::string& number) {
    return ": A split may fail over #" + number +
           " in the text of the record, which is far beyond the highest number that is there.";
  };
  const std::string DROPPED =
      " error record_without_type #2000000: The record is dropped, since no \"=\", type and \"(\" "
      "stand behind its number.";
  EXPECT_EQ(found_in("#2000000=();\n"),
            (Lines{"20" + DROPPED, "20 error instance_beyond_store #2000000" + beyond("2000000")}));
  EXPECT_EQ(found_in("#2000000=();\n#2000001=A();\n"), (Lines{"20" + DROPPED}));
  EXPECT_EQ(found_in("#20=A(#9,#3000000);\n#20=B();\n"),
            (Lines{"20 error instance_beyond_store #20" + beyond("3000000"),
                   "21 error repeated_number #20: The number #20 was given to the record in line "
                   "20 already, which loses its place to this one."}));
  EXPECT_EQ(found_in("#20=A(#x,#3000000);\n"),
            (Lines{"20 error malformed_reference #20: A \"#\" in the record has no number from 1 "
                   "to 4,294,967,295 behind it; the references behind it are not seen.",
                   "20 error instance_beyond_store #20" + beyond("3000000")}));
}

TEST(ReferenceCheck, Cycles) {
  EXPECT_EQ(found_in("#20=A(#20);\n"),
            (Lines{"20 warning reference_cycle #20: #20 refers to itself."}));
  EXPECT_EQ(
      found_in("#21=A(#20);\n#20=B(#21,#1);\n#22=C(#20,#21);\n"),
      (Lines{"21 warning reference_cycle #20: #20 and 1 other record refer to each other in a "
             "circle."}));
  EXPECT_EQ(
      found_in("#20=A(#21);\n#21=B(#22,#22);\n#22=C(#20,#22);\n#23=A(#24);\n#24=A(#23);\n"),
      (Lines{"20 warning reference_cycle #20: #20 and 2 other records refer to each other in "
             "a circle.",
             "23 warning reference_cycle #23: #23 and 1 other record refer to each other in a "
             "circle."}));
}

}  // namespace
}  // namespace Kessel::test
