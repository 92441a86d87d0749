// The type name and the first string of a record's text.
#include <gtest/gtest.h>

#include <cstddef>
#include <string_view>
#include <vector>

#include "reader/record_loader.h"

namespace Kessel::test {
namespace {

struct TypeCase {
  std::string_view record;
  std::string_view expected;
};

/// The type behind the two characters of a one-digit number.
void expect_types(const std::vector<TypeCase>& cases) {
  for (const auto& [record, expected] : cases) {
    SCOPED_TRACE(record);
    EXPECT_EQ(record_type(2, record), expected);
  }
}

TEST(RecordType, KeywordStandsBetweenTheEqualsSignAndTheParenthesis) {
  expect_types({{"#5=PRODUCT('x','y','',(#2))", "PRODUCT"},
                {"#5 = PRODUCT ('x','y','',(#2))", "PRODUCT"},
                {"#5\r\n=\t\v\fPRODUCT\n\t(\n'x')", "PRODUCT"},
                {"#5=A()", "A"},
                {"#5=!MY_TYPE(1)", "!MY_TYPE"},
                {"#5=A B (1)", "A B"},
                {"#5=A((1),(2))", "A"},
                {"#5=A('=',(1))", "A"}});
}

TEST(RecordType, ComplexInstanceHasItsWholeInnerText) {
  expect_types({{"#9 = ( A() B() )", "A() B()"},
                {"#9=(A()B())", "A()B()"},
                {"#9=(\r\n A('x',#1)\r\n B(*)\r\n )", "A('x',#1)\r\n B(*)"},
                {"#9=( A() B() ) , 'no more'", "A() B()"},
                {"#9=(A(')", "A('"}});
}

TEST(RecordType, ThereIsNoneWithoutAnEqualsSign) {
  expect_types({{"#5", ""}, {"#5 PRODUCT('x')", ""}, {"#5()", ""}});
}

TEST(RecordType, ThereIsNoneWithoutAnythingBehindTheEqualsSign) {
  expect_types({{"#5=", ""}, {"#5=  \n", ""}});
}

TEST(RecordType, ThereIsNoneWithoutAParenthesis) {
  expect_types({{"#5=PRODUCT", ""}, {"#5=PRODUCT)", ""}});
}

TEST(RecordType, ThereIsNoneInAComplexInstanceWithoutInnerText) {
  expect_types({{"#9=()", ""}, {"#9=(  )", ""}, {"#9=(", ""}, {"#9=(A(", ""}, {"#9)=(A", ""}});
}

TEST(RecordType, TextBeforeTheStartIsNotLookedAt) {
  constexpr std::string_view RECORD = "#1=A()#2=B()";
  EXPECT_EQ(record_type(2, RECORD), "A");
  EXPECT_EQ(record_type(3, RECORD), "B");
  EXPECT_EQ(record_type(9, RECORD), "");
  EXPECT_EQ(record_type(RECORD.size(), RECORD), "");
}

TEST(RecordType, TypeIsAViewOfTheRecord) {
  constexpr std::string_view RECORD = "#5 = PRODUCT ('x')";
  EXPECT_EQ(record_type(2, RECORD).data(), RECORD.data() + 5);
}

TEST(FirstString, IsTheTextBetweenTheFirstTwoApostrophes) {
  EXPECT_EQ(first_string("#5=PRODUCT('a name','b','',(#2))"), "a name");
  EXPECT_EQ(first_string("#5=PRODUCT(#1,$,'a','b')"), "a");
  EXPECT_EQ(first_string("#5=PRODUCT('','b')"), "");
}

TEST(FirstString, DoubledApostropheEndsIt) {
  EXPECT_EQ(first_string("#5=PRODUCT('it''s','b')"), "it");
}

TEST(FirstString, WithoutAnApostropheItIsTheWholeRecord) {
  EXPECT_EQ(first_string("#5=PRODUCT($,#6)"), "#5=PRODUCT($,#6)");
}

TEST(FirstString, WithOneApostropheItIsTheRest) {
  EXPECT_EQ(first_string("#5=PRODUCT('a,#6)"), "a,#6)");
  EXPECT_EQ(first_string("#5=PRODUCT('"), "");
}

TEST(WholeFirstString, KeepsDoubledApostrophesAndDirectives) {
  EXPECT_EQ(whole_first_string("#5=PRODUCT('a name','b','',(#2))"), "a name");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('it''s','b')"), "it''s");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('''quoted''','b')"), "''quoted''");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('\\X\\F6','b')"), "\\X\\F6");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('\\S\\' \\S\\a','b')"), "\\S\\' \\S\\a");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('','b')"), "");
  EXPECT_EQ(whole_first_string("#5=PRODUCT($,'b')"), "b");
}

TEST(WholeFirstString, WithoutStringIsEmpty) {
  EXPECT_EQ(whole_first_string("#5=PRODUCT($,#6)"), "");
}

TEST(WholeFirstString, StringThatDoesNotEndGoesToTheEnd) {
  EXPECT_EQ(whole_first_string("#5=PRODUCT('a,#6)"), "a,#6)");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('a''"), "a''");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('a'"), "a");
  EXPECT_EQ(whole_first_string("#5=PRODUCT('"), "");
}

}  // namespace
}  // namespace Kessel::test
