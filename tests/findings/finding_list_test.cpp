// Findings as they are collected, and their kinds.
#include "findings/finding_list.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

#include "check/check_text.h"
#include "findings/finding_kinds.h"

namespace Kessel::test {
namespace {

using enum FindingKind;

Lines taken_from(FindingList& list) {
  Lines lines;
  for (const Finding& finding : list.take()) lines.push_back(describe(finding));
  return lines;
}

/// Adds a finding at the beginning of a line.
void add(FindingList& list, FindingKind kind, std::uint64_t offset, std::uint64_t line,
         std::uint64_t instance, std::string sentence) {
  Finding finding = make_finding(kind, std::move(sentence), offset, instance);
  finding.line = line;
  finding.column = line == 0 ? 0 : 1;
  list.add(std::move(finding));
}

TEST(FindingList, GoesByOffsetWithTheWholeFileFirst) {
  FindingList list;
  add(list, missing_instance, 50, 3, 7, "c");
  add(list, unclosed_list, 10, 2, 5, "a");
  add(list, no_part, 0, 0, 0, "whole");
  add(list, two_texts_of_a_number, 50, 3, 7, "d");
  EXPECT_EQ(taken_from(list), (Lines{"warning no_part: whole", "2:1@10 error unclosed_list #5: a",
                                     "3:1@50 error missing_instance #7: c",
                                     "3:1@50 error two_texts_of_a_number #7: d"}));
  EXPECT_EQ(taken_from(list), Lines());
}

// The lines of some may not be counted yet.
TEST(FindingList, GoesByOffsetWhetherOrNotLinesAreKnown) {
  FindingList list;
  add(list, two_texts_of_a_number, 50, 3, 7, "c");
  add(list, same_text_twice, 60, 0, 7, "d");
  add(list, lone_backslash, 40, 0, 5, "b");
  add(list, missing_header, 0, 1, 0, "a");
  add(list, no_part, 0, 0, 0, "whole");
  EXPECT_EQ(taken_from(list),
            (Lines{"warning no_part: whole", "1:1@0 error missing_header: a",
                   "warning lone_backslash #5: b", "3:1@50 error two_texts_of_a_number #7: c",
                   "warning same_text_twice #7: d"}));
}

TEST(FindingList, NumbersOfInstancesHaveSixtyFourBits) {
  FindingList list;
  add(list, lone_backslash, 40, 2, 18'446'744'073'709'551'615U, "b");
  EXPECT_EQ(list.take().at(0).instance, 18'446'744'073'709'551'615U);
}

TEST(FindingList, KeepsTwentyOfAKindAndCountsTheOthers) {
  FindingList list;
  Lines expected;
  for (std::uint32_t i = 1; i <= 20; ++i) {
    add(list, missing_instance, i, i, i, "cut");
    const std::string n = std::to_string(i);
    expected.push_back(n + ":1@" + n + " error missing_instance #" + n + ": cut");
  }
  FindingList twenty = list;
  EXPECT_EQ(taken_from(twenty), expected);

  FindingList more = list;
  add(more, missing_instance, 21, 21, 21, "cut");
  Lines with_one = expected;
  with_one.push_back(
      "21:1@21 error missing_instance #21: And 1 more like the 20 that are listed: cut");
  EXPECT_EQ(taken_from(more), with_one);

  for (std::uint32_t i = 21; i < 12'366; ++i) add(list, missing_instance, i, i, i, "cut");
  add(list, unreadable, 0, 0, 0, "none");
  expected.insert(expected.begin(), "error unreadable: none");
  expected.push_back(
      "21:1@21 error missing_instance #21 x12345: And 12,345 more like the 20 that are listed: "
      "cut");
  EXPECT_EQ(taken_from(list), expected);
}

TEST(FindingList, GoesFileByFileAfterTheInput) {
  FindingList list;
  add(list, no_part, 10, 2, 0, "input");
  list.begin_file("z");
  add(list, foreign_record, 50, 3, 7, "b");
  add(list, missing_record, 0, 0, 8, "a");
  list.begin_file("a");
  add(list, foreign_record, 10, 2, 7, "c");
  Lines lines;
  for (const Finding& finding : list.take()) lines.push_back(finding.file + ":" + finding.sentence);
  EXPECT_EQ(lines, (Lines{":input", "z:a", "z:b", "a:c"}));
}

TEST(FindingList, CountsOfAKindOverAllFiles) {
  FindingList list;
  for (std::uint32_t i = 0; i < 25; ++i) {
    list.begin_file(std::to_string(i));
    add(list, missing_file, 0, 0, 0, "gone");
  }
  const std::vector<Finding> findings = list.take();
  ASSERT_EQ(findings.size(), 21u);
  EXPECT_EQ(findings[20].file, "20");
  EXPECT_EQ(findings[20].count, 5u);
}

TEST(FindingList, NumbersHaveCommasBetweenThousands) {
  EXPECT_EQ(with_commas(0), "0");
  EXPECT_EQ(with_commas(999), "999");
  EXPECT_EQ(with_commas(1000), "1,000");
  EXPECT_EQ(with_commas(18'446'744'073'709'551'615U), "18,446,744,073,709,551,615");
}

TEST(FindingKinds, EachHasANameOfItsOwn) {
  std::set<std::string_view> names;
  std::size_t count = 0;
  for (auto kind = unreadable; kind <= stand_in_left;
       kind = static_cast<FindingKind>(static_cast<int>(kind) + 1)) {
    names.insert(name_of(kind));
    ++count;
  }
  EXPECT_EQ(names.size(), count);
  EXPECT_EQ(name_of(unreadable), "unreadable");
  EXPECT_EQ(name_of(unreadable), "unreadable");
}

}  // namespace
}  // namespace Kessel::test
