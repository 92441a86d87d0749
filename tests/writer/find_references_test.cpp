// Where a record's text mentions other instances.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "writer/rewrite.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Each reference as "begin-end:number".
std::vector<std::string> found_in(std::string_view text) {
  std::vector<TextReference> references{{99, 99, 99}};  // Cleared by the search.
  find_references(text, references);
  std::vector<std::string> described;
  for (const TextReference& found : references) {
    described.push_back(std::to_string(found.begin) + "-" + std::to_string(found.end) + ":" +
                        std::to_string(found.number));
  }
  return described;
}

TEST(FindReferences, OwnNumberComesFirstAndRepeatsAreKept) {
  EXPECT_THAT(found_in("#5=A(#3,#12,#3)"), ElementsAre("1-2:5", "6-7:3", "9-11:12", "13-14:3"));
}

TEST(FindReferences, StringLiteralsAreSkipped) {
  EXPECT_THAT(found_in("#5=A('x#3',#3)"), ElementsAre("1-2:5", "12-13:3"));
}

TEST(FindReferences, DoubledApostropheStaysInsideTheLiteral) {
  EXPECT_THAT(found_in("#5=A('it''s #3',#4)"), ElementsAre("1-2:5", "17-18:4"));
}

TEST(FindReferences, UnclosedLiteralEndsTheSearch) {
  EXPECT_THAT(found_in("#5=A(#6,'x,#3)"), ElementsAre("1-2:5", "6-7:6"));
}

TEST(FindReferences, LeadingZerosAreLeftOutOfTheDigits) {
  EXPECT_THAT(found_in("#005=A(#0120)"), ElementsAre("3-4:5", "9-12:120"));
}

TEST(FindReferences, HashWithoutDigitsEndsTheSearch) {
  EXPECT_THAT(found_in("#5=A(#x,#3)"), ElementsAre("1-2:5"));
}

TEST(FindReferences, ZeroEndsTheSearch) {
  EXPECT_THAT(found_in("#5=A(#6,#000,#3)"), ElementsAre("1-2:5", "6-7:6"));
}

TEST(FindReferences, LargestNumberIsTheLargestOfThirtyTwoBits) {
  EXPECT_THAT(found_in("#5=A(#4294967295,#3)"), ElementsAre("1-2:5", "6-16:4294967295", "18-19:3"));
  EXPECT_THAT(found_in("#5=A(#4294967296,#3)"), ElementsAre("1-2:5"));
  EXPECT_THAT(found_in("#5=A(#99999999999999999999999,#3)"), ElementsAre("1-2:5"));
}

TEST(FindReferences, DigitsMayEndTheText) {
  EXPECT_THAT(found_in("#12"), ElementsAre("1-3:12"));
}

TEST(FindReferences, ReferencesMayTouch) {
  EXPECT_THAT(found_in("#1#2'#3'#4"), ElementsAre("1-2:1", "3-4:2", "9-10:4"));
}

TEST(FindReferences, TextWithoutReferencesHasNone) {
  EXPECT_THAT(found_in(""), IsEmpty());
  EXPECT_THAT(found_in("A('#1')"), IsEmpty());
}

TEST(FirstReference, IsTheFirstThatIsFound) {
  const std::string texts[] = {"#5=A(#3,#12)", "#005=A(#3)",   "#4294967295",  "x#6=A(#3)",
                               "'#1'#20=A()",  "'it''s #3'#4", " #0012=A(#7)", "#8"};
  for (const std::string& text : texts) {
    SCOPED_TRACE(text);
    std::vector<TextReference> all;
    find_references(text, all);
    const std::optional<TextReference> first = first_reference(text);
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->begin, all.at(0).begin);
    EXPECT_EQ(first->end, all.at(0).end);
    EXPECT_EQ(first->number, all.at(0).number);
  }
}

TEST(FirstReference, IsNoneWhereNoneIsFound) {
  for (const std::string text :
       {"", "A", "#", "#x=A(#3)", "#0=A(#3)", "#4294967296=A(#3)", "'#3'", "'#3", "A('#1','')"}) {
    EXPECT_FALSE(first_reference(text).has_value()) << text;
  }
}

TEST(FindReferences, MarksAreFoundAtEveryDistance) {
  // The search looks at several bytes at once: every offset of the mark has to do.
  for (std::size_t gap = 0; gap < 40; ++gap) {
    const std::string text = "#1=" + std::string(gap, '\x23' + 1) + "#2" + std::string(gap, '&');
    SCOPED_TRACE(text);
    const std::string begin = std::to_string(gap + 4);
    EXPECT_THAT(found_in(text), ElementsAre("1-2:1", begin + "-" + std::to_string(gap + 5) + ":2"));
  }
}

}  // namespace
}  // namespace Kessel::test
