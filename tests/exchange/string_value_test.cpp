#include "exchange/string_value.h"

#include <gtest/gtest.h>

#include <string>

#include "exchange/plain_reader.h"

namespace Kessel::Exchange {
namespace {

TEST(StringValue, OfPlainText) {
  EXPECT_EQ(string_value("''"), "");
  EXPECT_EQ(string_value("'bolt; M3'"), "bolt; M3");
  EXPECT_EQ(string_value("'it''s'"), "it's");
  EXPECT_EQ(string_value("'a\\\\b'"), "a\\b");
  EXPECT_EQ(string_value("'\u00FC\u652F\U0001F600'"), "\u00FC\u652F\U0001F600");
}

TEST(StringValue, LeavesOutLineFeedsAndPrintControl) {
  EXPECT_EQ(string_value("'a\nb\r\nc\td\\N\\e\\F\\f'"), "abc\tdef");
}

TEST(StringValue, OfShiftedCharacters) {
  EXPECT_EQ(string_value("'\\S\\d'"), "\u00E4");
  EXPECT_EQ(string_value("'\\S\\ \\S\\\\\\S\\\x7F'"), "\u00A0\u00DC\u00FF");
  EXPECT_EQ(string_value("'\\S\\''"), "\u00A7");
  EXPECT_EQ(string_value("'\\S\\'''a'"), "\u00A7'a");
  EXPECT_EQ(string_value("'\\S\\'' 5'"), "\u00A7 5") << "the shifted apostrophe is doubled";
}

TEST(StringValue, OfEveryAlphabet) {
  EXPECT_EQ(string_value("'\\PA\\\\S\\i\\PB\\\\S\\i\\PC\\\\S\\i\\PD\\\\S\\i\\PE\\\\S\\i'"),
            "\u00E9\u00E9\u00E9\u00E9\u0449");
  EXPECT_EQ(string_value("'\\PF\\\\S\\i\\PG\\\\S\\i\\PH\\\\S\\i\\PI\\\\S\\p'"),
            "\u0649\u03B9\u05D9\u011F");
  EXPECT_EQ(string_value("'\\PC\\\\S\\%'"), "\uFFFD") << "no character has this code there";
  EXPECT_EQ(string_value("'\\PE\\\\S\\i\\PA\\\\S\\i'"), "\u0449\u00E9");
}

TEST(StringValue, OfHexadecimalCharacters) {
  EXPECT_EQ(string_value("'\\X\\E9\\X\\27'"), "\u00E9'");
  EXPECT_EQ(string_value("'\\X2\\652f67B6\\X0\\!'"), "\u652F\u67B6!");
  EXPECT_EQ(string_value("'\\X4\\0001F6000000652F\\X0\\'"), "\U0001F600\u652F");
  EXPECT_EQ(string_value("'\\X2\\\\X0\\'"), "");
}

TEST(StringValue, OfSurrogates) {
  EXPECT_EQ(string_value("'\\X2\\D83DDE00\\X0\\'"), "\U0001F600");
  EXPECT_EQ(string_value("'\\X2\\D83D\\X0\\'"), "\uFFFD");
  EXPECT_EQ(string_value("'\\X2\\DE00D83D0041\\X0\\'"),
            "\uFFFD\uFFFD"
            "A");
  EXPECT_EQ(string_value("'\\X4\\00110000\\X0\\'"), "\uFFFD");
}

TEST(StringValue, OfRunsThatAreNotClosed) {
  EXPECT_EQ(string_value("'\\X2\\00E4 b'"), "\u00E4 b");
  EXPECT_EQ(string_value("'\\X2\\00'"), "\\X2\\00");
}

TEST(StringValue, OfLoneBackslashes) {
  EXPECT_EQ(string_value("'C:\\dir\\X\\\\S\\'"), "C:\\dir\\X\\S\\");
  EXPECT_EQ(string_value("'\\PJ\\\\X\\G0'"), "\\PJ\\X\\G0");
  EXPECT_EQ(string_value(R"('\X\\X2\0027\X0\')"), R"(\X\X2\0027\X0\)")
      << "nothing is taken of what is no directive";
}

TEST(StringValue, OfBytesThatAreNotUtf8) {
  EXPECT_EQ(string_value("'\xE4\xC3\xA4\xC3'"), "\u00E4\u00E4\u00C3");
}

TEST(StringValue, OfWhatIsNoLiteral) {
  EXPECT_EQ(string_value(""), "");
  EXPECT_EQ(string_value("'"), "");
}

TEST(HasLoneBackslash, LooksIntoStringsOnly) {
  EXPECT_FALSE(has_lone_backslash("A('a\\\\b','\\X2\\00E4\\X0\\','\\S\\d\\PA\\\\N\\\\X\\41')"));
  EXPECT_FALSE(has_lone_backslash("\\N\\A/* \\ */('')"));
  EXPECT_TRUE(has_lone_backslash("A('a','C:\\dir')"));
  EXPECT_TRUE(has_lone_backslash("A('a\\')"));
  EXPECT_TRUE(has_lone_backslash("A('\\X2\\00E4')"));
}

TEST(IsUtf8, OfAllText) {
  EXPECT_TRUE(is_utf8(""));
  EXPECT_TRUE(is_utf8("a\u00FC"));
  EXPECT_FALSE(is_utf8("a\xFC"));
}

TEST(StringLiteral, SaysTheText) {
  EXPECT_EQ(string_literal(""), "''");
  EXPECT_EQ(string_literal("it's a\\b"), "'it''s a\\\\b'");
  EXPECT_EQ(string_literal("a\u652F\u67B6"
                           "b\u00E4"),
            "'a\\X2\\652F67B6\\X0\\b\\X2\\00E4\\X0\\'");
  EXPECT_EQ(string_literal("\u00E4\U0001F600\n"),
            "'\\X2\\00E4\\X0\\\\X4\\0001F600\\X0\\\\X2\\000A\\X0\\'");
  EXPECT_EQ(string_literal("\xE4"), "'\\X2\\00E4\\X0\\'");
}

TEST(StringLiteral, IsReadAsTheTextByThePlainReaderToo) {
  for (const std::string text : {"", "'", "\\S\\'", "a;\u00E4\U0001F600'\n\t", "\x7F", "\\X0\\"}) {
    EXPECT_EQ(string_value(string_literal(text)), text);
    EXPECT_EQ(test::plain::value_of(string_literal(text)), text);
    EXPECT_FALSE(has_lone_backslash(string_literal(text)));
  }
}

}  // namespace
}  // namespace Kessel::Exchange
