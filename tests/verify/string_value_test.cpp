// What strings say.
#include <gtest/gtest.h>

#include <string>

#include "encoding/string_body.h"
#include "verify/string_value.h"

namespace Kessel::test {
namespace {

TEST(StringValue, PlainText) {
  EXPECT_EQ(string_value(""), "");
  EXPECT_EQ(string_value(" #4_part.stp "), " #4_part.stp ");
}

TEST(StringValue, DoubledCharacters) {
  EXPECT_EQ(string_value("it''s a \\\\"), "it's a \\");
}

TEST(StringValue, Directives) {
  EXPECT_EQ(string_value("\\X\\E4"), "\u00E4");
  EXPECT_EQ(string_value("a\\X2\\652F67b6\\X0\\b"), "a\u652F\u67B6b");
  EXPECT_EQ(string_value("\\X4\\0001F600\\X0\\"), "\U0001F600");
}

TEST(StringValue, WhatIsNotWrittenSoHasNone) {
  for (const char* text : {"'", "\\", "a\tb", "\xC3\xA4", "\\X\\E", "\\X\\EG", "\\X\\+1", "\\X2\\",
                           "\\X2\\00E4", "\\X2\\00E\\X0\\", "\\X2\\D800\\X0\\", "\\X2\\\\X0\\",
                           "\\X4\\00110000\\X0\\", "\\S\\a", "\\PA\\"}) {
    EXPECT_EQ(string_value(text), std::nullopt) << text;
  }
}

TEST(StringValue, UndoesTheEncoding) {
  for (const char* text : {"a", "it's", "\\", "\u00E4\u652F\U0001F600 x\u652F", "''"}) {
    EXPECT_EQ(string_value(encode_string_body(text)), text);
  }
}

}  // namespace
}  // namespace Kessel::test
