#include "exchange/parameters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace Kessel::Exchange {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> records(std::string_view body) {
  std::vector<std::string> texts;
  for (const PartialRecord& record : partial_records(body)) {
    texts.push_back(std::string(record.keyword) + ' ' + std::string(record.list));
  }
  return texts;
}

TEST(PartialRecords, OfSimpleRecords) {
  EXPECT_THAT(records("A('x',(1,(2)),B(3))"), ElementsAre("A ('x',(1,(2)),B(3))"));
  EXPECT_THAT(records("!A /* a */ ( )"), ElementsAre("!A ( )"));
}

TEST(PartialRecords, OfComplexRecords) {
  EXPECT_THAT(records("(A(1)B()/**/ C ('(',$))"), ElementsAre("A (1)", "B ()", "C ('(',$)"));
}

TEST(PartialRecords, OfTextThatBreaksOff) {
  EXPECT_THAT(records(""), IsEmpty());
  EXPECT_THAT(records("A"), IsEmpty());
  EXPECT_THAT(records("()"), IsEmpty());
  EXPECT_THAT(records("(A(1)B(2"), ElementsAre("A (1)", "B (2"));
}

TEST(ItemsOf, AreTheParametersAsTheyStand) {
  EXPECT_THAT(items_of("(#1,'a,b',(2,(3)),B_(4,5),.T.,$,*,-1.E5)"),
              ElementsAre("#1", "'a,b'", "(2,(3))", "B_(4,5)", ".T.", "$", "*", "-1.E5"));
}

TEST(ItemsOf, LeavesOutBlanksAndCommentsAround) {
  EXPECT_THAT(items_of("(/*a*/ 1 /*,*/, \\N\\( 2 /*b*/ )\n)"), ElementsAre("1", "( 2 /*b*/ )"));
}

TEST(ItemsOf, TakesEmptyPlacesForItems) {
  EXPECT_THAT(items_of("()"), IsEmpty());
  EXPECT_THAT(items_of("( /**/ )"), IsEmpty());
  EXPECT_THAT(items_of("(,)"), ElementsAre("", ""));
  EXPECT_THAT(items_of("(1,)"), ElementsAre("1", ""));
}

TEST(ItemsOf, OfWhatIsNoListOrBreaksOff) {
  EXPECT_THAT(items_of("A"), IsEmpty());
  EXPECT_THAT(items_of(""), IsEmpty());
  EXPECT_THAT(items_of("(1,(2,3"), ElementsAre("1", "(2,3"));
}

TEST(ItemsOf, AreTheSameWithACommentInFront) {
  // A comment has the list taken apart word by word.
  constexpr std::string_view PIECES[] = {",",  ",",   ",",   "(",  ")",   " ",   "\n", "'",
                                         "#1", "'a'", "''",  "A_", ".T.", "-1.", "$",  "\"2A\"",
                                         "\"", ".",   "'(,", ";",  "!B",  "@2"};
  std::mt19937 random(31);
  std::size_t with_items = 0;
  for (int round = 0; round < 30'000; ++round) {
    std::string text;
    for (std::size_t left = random() % 14; left > 0; --left) {
      text += PIECES[random() % std::size(PIECES)];
    }
    const std::string list = "(" + text + ")";
    const Parameters items = items_of(list);
    const std::string commented = "(/**/" + text + ")";
    ASSERT_EQ(testing::PrintToString(items), testing::PrintToString(items_of(commented))) << text;
    with_items += items.size() > 1 ? 1 : 0;
  }
  EXPECT_GT(with_items, 3'000u);
}

TEST(ParametersOf, OfSimpleRecordsWhateverTheyAre) {
  EXPECT_THAT(parameters_of("A(1,2)", "A"), ElementsAre("1", "2"));
  EXPECT_THAT(parameters_of("A(1,2)", "B"), ElementsAre("1", "2"));
  EXPECT_THAT(parameters_of("A(1) /**/ 2", "B"), ElementsAre("1"));
  EXPECT_THAT(parameters_of("A(1)B(2)", "B"), ElementsAre("2"));
  EXPECT_THAT(parameters_of("A", "A"), IsEmpty());
}

TEST(ParametersOf, OfComplexRecordsByKeyword) {
  EXPECT_THAT(parameters_of("(A(1)B(2,3))", "B"), ElementsAre("2", "3"));
  EXPECT_THAT(parameters_of("(A(1)B(2,3))", "C"), IsEmpty());
  EXPECT_THAT(parameters_of("(A(1))", "B"), IsEmpty());
}

TEST(Parameter, IsEmptyBeyondTheLast) {
  const Parameters parameters = items_of("(1,2)");
  EXPECT_EQ(parameter(parameters, 1), "2");
  EXPECT_EQ(parameter(parameters, 2), "");
}

TEST(InstanceOf, IsTheNumberOfANameAlone) {
  EXPECT_EQ(instance_of("#12"), 12u);
  EXPECT_EQ(instance_of("#0012"), 12u);
  EXPECT_EQ(instance_of("#18446744073709551615"), 18446744073709551615u);
  for (const char* other :
       {"", "#", "12", "#12 ", " #12", "(#12)", "'#12'", "@12", "#PI", "#12,#3"}) {
    EXPECT_EQ(instance_of(other), 0u) << other;
  }
}

}  // namespace
}  // namespace Kessel::Exchange
