// Records and header entities taken apart.
#include "inspection/parameters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "KEYWORD:(text from its parenthesis)" of each group.
std::vector<std::string> groups_of(std::string_view text) {
  std::vector<std::string> groups;
  for_each_group(text, [&](std::string_view keyword, std::string_view list) {
    groups.push_back(std::string(keyword) + ":" + std::string(list));
  });
  return groups;
}

TEST(Groups, SimpleRecordHasOne) {
  EXPECT_THAT(groups_of("#5 = PRODUCT ('a',(#1))"), ElementsAre("PRODUCT:('a',(#1))"));
}

TEST(Groups, ComplexRecordHasOneForEachOfItsEntities) {
  EXPECT_THAT(groups_of("#5=(A()B_2(#1,C(2)) D('E()'))"),
              ElementsAre("A:()B_2(#1,C(2)) D('E()'))", "B_2:(#1,C(2)) D('E()'))", "D:('E()'))"));
}

TEST(Groups, HeaderHasOneForEachEntity) {
  EXPECT_THAT(groups_of("ISO-10303-21;\nHEADER;\nA((''),'2;1');\nB('');\nENDSEC;\n"),
              ElementsAre("A:((''),'2;1');\nB('');\nENDSEC;\n", "B:('');\nENDSEC;\n"));
}

TEST(Groups, CommentsAndStringsHideWhatTheyHold) {
  EXPECT_THAT(groups_of("/* A(1) 'x */ 'B(2)' C /* D */ (3)"), ElementsAre("C:(3)"));
}

TEST(Groups, KeywordMustStandInFrontOfItsParenthesis) {
  EXPECT_THAT(groups_of("A B(1)"), ElementsAre("B:(1)"));
  EXPECT_THAT(groups_of("A;(1)"), IsEmpty());
  EXPECT_THAT(groups_of("A='x'(1)"), IsEmpty());
  EXPECT_THAT(groups_of("A"), IsEmpty());
  EXPECT_THAT(groups_of(""), IsEmpty());
}

TEST(ListItems, AreSplitAtCommasOfTheListItself) {
  EXPECT_THAT(list_items("( 'a,b' , (1,2) ,\n$, B(3,4), #5)rest"),
              ElementsAre("'a,b' ", "(1,2) ", "$", "B(3,4)", "#5"));
}

TEST(ListItems, StandWithoutTheCommentsInFrontOfThem) {
  EXPECT_THAT(list_items(" /* a list, (of) two */ (/* it's one */'a', /**/ /*b*/ 'c')"),
              ElementsAre("'a'", "'c'"));
}

TEST(ListItems, EmptyListHasNone) {
  EXPECT_THAT(list_items("()"), IsEmpty());
  EXPECT_THAT(list_items("( /* none */ )"), IsEmpty());
  EXPECT_THAT(list_items("(,)"), ElementsAre("", ""));
}

TEST(ListItems, TextThatIsNoListHasNone) {
  EXPECT_THAT(list_items("'(a)'"), IsEmpty());
  EXPECT_THAT(list_items("$"), IsEmpty());
  EXPECT_THAT(list_items(""), IsEmpty());
}

TEST(ListItems, ListThatBreaksOffHasWhatIsThere) {
  EXPECT_THAT(list_items("('a',(1,2"), ElementsAre("'a'", "(1,2"));
  EXPECT_THAT(list_items("('a','b"), ElementsAre("'a'", "'b"));
  EXPECT_THAT(list_items("('a',/* b"), ElementsAre("'a'", ""));
  EXPECT_THAT(list_items("("), IsEmpty());
}

TEST(ParametersOf, AreThoseOfTheFirstEntityOfThatName) {
  const std::string_view record = "#1=(AB(1)B(2,3)B(4))";
  EXPECT_THAT(parameters_of(record, "B"), ElementsAre("2", "3"));
  EXPECT_THAT(parameters_of(record, "C"), IsEmpty());
  EXPECT_EQ(parameter(parameters_of(record, "B"), 1), "3");
  EXPECT_EQ(parameter(parameters_of(record, "B"), 2), "");
}

TEST(TextValue, IsDecoded) {
  EXPECT_EQ(text_value("'it''s \\X2\\00E4\\X0\\'"), "it's ä");
  EXPECT_EQ(text_value("''"), "");
  EXPECT_EQ(text_value("'a'' ' , 'b'"), "a'");
}

TEST(TextValue, LineBreaksInsideAreNotText) {
  EXPECT_EQ(text_value("'one\ntwo'"), "onetwo");
}

TEST(TextValue, BytesThatAreNotUtf8AreIso8859) {
  EXPECT_EQ(text_value("'caf\xE9'"), "café");
  EXPECT_EQ(text_value("'caf\\X\\E9'"), "café");
  EXPECT_EQ(text_value("'caf\xC3\xA9 \xE2\x82'"), "café â\xEF\xBF\xBD");
}

TEST(TextValue, IsEmptyForAllElse) {
  for (const char* text : {"$", "*", "", "#1", "('a')"}) EXPECT_EQ(text_value(text), "") << text;
}

TEST(TextValue, LiteralThatBreaksOffIsTextToItsEnd) {
  EXPECT_EQ(text_value("'abc"), "abc");
  EXPECT_EQ(text_value("'"), "");
  EXPECT_EQ(text_value("'a''"), "a'");
}

TEST(TextValues, KeepEmptyOnes) {
  EXPECT_THAT(text_values("('a','',$,'b')"), ElementsAre("a", "", "", "b"));
  EXPECT_THAT(text_values("$"), IsEmpty());
}

TEST(ReferenceValue, IsTheNumber) {
  EXPECT_EQ(reference_value("#12 "), 12u);
  EXPECT_EQ(reference_value("#4294967295"), 4294967295u);
  for (const char* text : {"#4294967296", "#", "12", "'#12'", ""}) {
    EXPECT_EQ(reference_value(text), 0u) << text;
  }
}

TEST(EnumerationValue, IsTheNameBetweenTheDots) {
  EXPECT_EQ(enumeration_value(".MILLI. "), "MILLI");
  for (const char* text : {"$", ".MILLI", "MILLI", "", ".."}) {
    EXPECT_EQ(enumeration_value(text), "") << text;
  }
}

TEST(NumberValue, MayBeTypedOrNot) {
  const std::pair<const char*, double> CASES[] = {
      {"25.4", 25.4},
      {"2.54E1", 25.4},
      {"1.", 1.},
      {"+3.", 3.},
      {"-1.E-07", -1e-7},
      {"LENGTH_MEASURE(2.54E1)", 25.4},
      {"RATIO_MEASURE(7)", 7},
      {"$", 0},
      {"", 0},
      {"'3'", 0},
      {"EMPTY()", 0},
  };
  for (const auto& [text, number] : CASES) EXPECT_EQ(number_value(text), number) << text;
}

TEST(NumberValue, WordsForNumbersAreNone) {
  for (const char* text : {"NAN", "INF", "nan", "LENGTH_MEASURE(inf)"}) {
    EXPECT_EQ(number_value(text), 0) << text;
  }
}

}  // namespace
}  // namespace Kessel::test
