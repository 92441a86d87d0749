// Texts in other scripts, in ASCII.
#include "naming/ascii.h"

#include <gtest/gtest.h>

#include "naming/characters.h"

namespace Kessel::test {
namespace {

std::string ascii(std::string_view utf8) {
  return to_utf8(to_ascii(characters_of(utf8)));
}

TEST(Ascii, AsciiStaysAsItIs) {
  std::string all;
  for (char c = 1; c < 0x7F; ++c) all += c;
  EXPECT_EQ(ascii(all), all);
  EXPECT_EQ(ascii(""), "");
}

TEST(Ascii, LettersLoseTheirMarks) {
  EXPECT_EQ(ascii("Halter für Türgriff"), "Halter fur Turgriff");
  EXPECT_EQ(ascii("pièce déjà çà"), "piece deja ca");
  EXPECT_EQ(ascii("Łożysko żółć"), "Lozysko zolc");
  EXPECT_EQ(ascii("tiếng Việt"), "tieng Viet");
  EXPECT_EQ(ascii("u\u0308"), "u");
}

TEST(Ascii, LigaturesAndSignsAreSpelledOut) {
  EXPECT_EQ(ascii("Straße Æsir øre"), "Strasse AEsir ore");
  EXPECT_EQ(ascii("M4×10 ⌀8 ±0 45° m²"), "M4x10 D8 +-0 45deg m2");
  EXPECT_EQ(ascii("\uff21\uff22 \ufb01n ™"), "AB fin (TM)");  // full-width letters, a ligature
  EXPECT_EQ(ascii("a–b—c…"), "a-b-c...");
}

TEST(Ascii, OtherScriptsBecomeCodePoints) {
  EXPECT_EQ(ascii("支架"), "U652FU67B6");
  EXPECT_EQ(ascii("Ж1"), "U04161");
  EXPECT_EQ(ascii("\U0001F527"), "U1F527");
  EXPECT_EQ(ascii("\U0010FFFD"), "U10FFFD");
}

TEST(Ascii, WhatComesOutIsAsciiWhateverGoesIn) {
  for (char32_t c = 0x80; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    for (const char32_t out : to_ascii(std::u32string(1, c))) {
      ASSERT_TRUE(out >= 0x20 && out < 0x7F) << std::hex << +c;
    }
  }
}

}  // namespace
}  // namespace Kessel::test
