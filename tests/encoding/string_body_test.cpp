// Conforming exchange strings (ISO 10303-21, 6.4.3).
#include "encoding/string_body.h"

#include <gtest/gtest.h>

#include "encoding/unicode.h"
#include "kessel/encoding.h"

namespace Kessel::test {
namespace {

TEST(StringBody, PrintableAsciiIsItself) {
  EXPECT_EQ(encode_string_body(""), "");
  EXPECT_EQ(encode_string_body("bolt (2).stp ~"), "bolt (2).stp ~");
}

TEST(StringBody, ApostrophesAndBackslashesAreDoubled) {
  EXPECT_EQ(encode_string_body("O'Neil\\x"), "O''Neil\\\\x");
}

TEST(StringBody, OtherBytesAreDirectivesEach) {
  EXPECT_EQ(encode_string_body("f\u00fcr \u00ff"), "f\\X\\FCr \\X\\FF");
  EXPECT_EQ(encode_string_body("\t\x7F\u0080"), "\\X\\09\\X\\7F\\X\\80");
}

TEST(StringBody, WideCharactersHaveFourDigitsInOneRun) {
  EXPECT_EQ(encode_string_body("\u0100"), "\\X2\\0100\\X0\\");
  EXPECT_EQ(encode_string_body("a支架b"), "a\\X2\\652F67B6\\X0\\b");
  EXPECT_EQ(encode_string_body("支\u00fc架"), "\\X2\\652F\\X0\\\\X\\FC\\X2\\67B6\\X0\\");
}

TEST(StringBody, CharactersBeyondTheBasicPlaneHaveEight) {
  EXPECT_EQ(encode_string_body("\U0001F527\U0001F528x"), "\\X4\\0001F5270001F528\\X0\\x");
  EXPECT_EQ(encode_string_body("支\U0001F527"), "\\X2\\652F\\X0\\\\X4\\0001F527\\X0\\");
}

TEST(StringBody, BadSequencesAreReplacementCharacters) {
  EXPECT_EQ(encode_string_body("a\xC3(b"), "a\\X2\\FFFD\\X0\\(b");
}

TEST(StringBody, GraphicTextsComeBackFromTheDecoder) {
  for (char16_t c = 0x100; c < 0x3000; ++c) {
    if (!is_graphic(c)) continue;
    std::string text;
    append_utf8(text, c);
    ASSERT_EQ(decode_step_to_utf8(encode_string_body(text)), text) << std::hex << +c;
  }
}

}  // namespace
}  // namespace Kessel::test
