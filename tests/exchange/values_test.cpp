// What parameters say.
#include "exchange/values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Values, Texts) {
  EXPECT_EQ(text_value("'it''s \\X2\\30CD30B8\\X0\\'"), "it's ネジ");
  EXPECT_EQ(text_value("'a;\nb /* c */'"), "a;b /* c */");
  EXPECT_EQ(text_value("''"), "");
  for (const char* none : {"", "$", "*", "#12", ".T.", "1.5", "('a')", "\"0FF\""}) {
    EXPECT_EQ(text_value(none), "") << none;
  }
}

TEST(Values, ListsOfTexts) {
  EXPECT_THAT(text_values("('a', /* , */ 'b,c' ,$,'')"), ElementsAre("a", "b,c", "", ""));
  EXPECT_THAT(text_values("()"), IsEmpty());
  EXPECT_THAT(text_values("'a'"), IsEmpty());
  EXPECT_THAT(text_values(""), IsEmpty());
}

TEST(Values, Enumerations) {
  EXPECT_EQ(enumeration_value(".MILLI."), "MILLI");
  for (const char* none : {"", ".", "..", "$", "MILLI", ".MILLI", "'.MILLI.'"}) {
    EXPECT_EQ(enumeration_value(none), "") << none;
  }
}

TEST(Values, Numbers) {
  EXPECT_EQ(number_value("25.4"), 25.4);
  EXPECT_EQ(number_value("+2"), 2);
  EXPECT_EQ(number_value("-1.E-3"), -0.001);
  EXPECT_EQ(number_value("LENGTH_MEASURE(2.54E1)"), 25.4);
  EXPECT_EQ(number_value("LENGTH_MEASURE /* in */ ( 4. )"), 4);
  for (const char* none : {"", "$", "'4.'", "INF", "NAN", "LENGTH_MEASURE()", "LENGTH_MEASURE",
                           "1.E999", "LENGTH_MEASURE(INF)"}) {
    EXPECT_EQ(number_value(none), 0) << none;
  }
}

}  // namespace
}  // namespace Kessel::test
