#include "exchange/literals.h"

#include <gtest/gtest.h>

#include <string>

namespace Kessel::Exchange {
namespace {

/// The literal at the beginning of `text`, or "-" where nothing closes it.
std::string literal(std::string_view text) {
  const std::size_t end = behind_string(text, 0);
  return end == std::string_view::npos ? "-" : std::string(text.substr(0, end));
}

TEST(BehindString, EndsAtTheApostrophe) {
  EXPECT_EQ(literal("'',"), "''");
  EXPECT_EQ(literal("'a;b'c'"), "'a;b'");
  EXPECT_EQ(behind_string("A('b')", 2), 5u);
}

TEST(BehindString, TakesDoubledApostrophesForCharacters) {
  EXPECT_EQ(literal("'it''s',"), "'it''s'");
  EXPECT_EQ(literal("'''',"), "''''");
  EXPECT_EQ(literal("''''''')"), "-");
}

TEST(BehindString, FindsNoEnd) {
  EXPECT_EQ(literal("'"), "-");
  EXPECT_EQ(literal("'a''b"), "-");
  EXPECT_EQ(literal("'\\"), "-");
}

TEST(BehindString, TakesDoubledBackslashesForCharacters) {
  EXPECT_EQ(literal("'\\\\','"), "'\\\\'");
  EXPECT_EQ(literal("'\\\\S\\\\','"), "'\\\\S\\\\'");
}

TEST(BehindString, ForgivesLoneBackslashes) {
  EXPECT_EQ(literal("'C:\\dir\\','"), "'C:\\dir\\'");
  EXPECT_EQ(literal("'\\','"), "'\\'");
  EXPECT_EQ(literal("'\\\\S\\','"), "'\\\\S\\'");
}

TEST(BehindString, KnowsTheShiftedApostrophe) {
  EXPECT_EQ(literal("'\\S\\'',"), "'\\S\\''");
  EXPECT_EQ(literal("'\\S\\'a',"), "'\\S\\'a'");
  EXPECT_EQ(literal("'\\S\\''',a',"), "'\\S\\''',a'") << "the second and third are a pair";
  EXPECT_EQ(literal("'\\S\\'''',a'"), "'\\S\\''''");
  EXPECT_EQ(literal("'\\S\\\\','"), "'\\S\\\\'") << "the shifted character is a backslash";
}

TEST(BehindString, KnowsTheShiftedApostropheBehindOtherDirectives) {
  EXPECT_EQ(literal("'\\X2\\00E4\\X0\\\\S\\'a',"), "'\\X2\\00E4\\X0\\\\S\\'a'");
  EXPECT_EQ(literal("'\\PE\\\\S\\'a',"), "'\\PE\\\\S\\'a'");
  EXPECT_EQ(literal("'\\N\\\\S\\'a',"), "'\\N\\\\S\\'a'");
}

TEST(BehindString, ForgivesTheShiftedApostropheThatIsDoubled) {
  EXPECT_EQ(literal("'\\S\\'' 5',"), "'\\S\\'' 5'");
  EXPECT_EQ(literal("'\\S\\''''a',"), "'\\S\\''''a'");
}

TEST(BehindString, EndsBehindTheShiftedApostropheInFrontOfAllThatFollowsParameters) {
  for (const char* follows : {",", ")", ";", " ,", "\n)", "/*,*/,", "\\N\\,", "}", "{", "  ", ""}) {
    EXPECT_EQ(literal(std::string("'\\S\\''") + follows), "'\\S\\''") << follows;
  }
}

}  // namespace
}  // namespace Kessel::Exchange
