// The encoder against a plain one that goes unit by unit over ICU's UTF-16.
#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <ios>
#include <random>
#include <string>
#include <string_view>

#include "encoding/unicode.h"
#include "kessel/encoding.h"

namespace Kessel::test {
namespace {

std::u16string to_utf16(std::string_view utf8) {
  std::u16string units(utf8.size() + 1, u'\0');
  std::int32_t length = 0;
  UErrorCode error = U_ZERO_ERROR;
  u_strFromUTF8WithSub(units.data(), static_cast<std::int32_t>(units.size()), &length, utf8.data(),
                       static_cast<std::int32_t>(utf8.size()), 0xFFFD, nullptr, &error);
  EXPECT_TRUE(U_SUCCESS(error)) << u_errorName(error);
  units.resize(static_cast<std::size_t>(length));
  return units;
}

std::string encode_unit_by_unit(std::string_view utf8) {
  std::string out;
  bool in_wide_run = false;
  for (const char16_t unit : to_utf16(utf8)) {
    if (unit > 255) {
      if (!in_wide_run) out += "\\X2\\";
      in_wide_run = true;
      char field[5] = {};
      std::snprintf(field, sizeof field, "%x", static_cast<unsigned>(unit));
      for (int i = 0; i < 4; ++i) out += static_cast<char>(std::toupper(field[i]));
    } else {
      if (in_wide_run) out += "\\X0\\";
      in_wide_run = false;
      if (unit == 92) {
        out += "\\\\";
      } else if (unit == 39) {
        out += "''";
      } else {
        out += static_cast<char>(unit);
      }
    }
  }
  if (in_wide_run) out += "\\X0\\";
  return out;
}

void expect_encoded_as_unit_by_unit(char32_t character) {
  std::string text = "a";
  append_utf8(text, character);
  text += 'z';
  ASSERT_EQ(encode_utf8_to_step(text), encode_unit_by_unit(text))
      << std::hex << std::uint32_t{character};
}

TEST(EncodeComparison, EveryCharacterOf16BitsEncodesAsUnitByUnit) {
  for (char32_t c = 0; c <= 0xFFFF; ++c) {
    if (c < 0xD800 || c > 0xDFFF) expect_encoded_as_unit_by_unit(c);
    if (HasFatalFailure()) return;
  }
}

TEST(EncodeComparison, CharactersBeyond16BitsEncodeAsUnitByUnit) {
  for (char32_t c = 0x10000; c <= 0x10FFFF; c += 0x3F) expect_encoded_as_unit_by_unit(c);
  expect_encoded_as_unit_by_unit(0x10FFFF);
}

TEST(EncodeComparison, RandomTextsEncodeAsUnitByUnit) {
  using namespace std::string_view_literals;
  constexpr std::string_view PIECES[] = {
      "a",        "'",        "\\",           "\0"sv,       "\n",         "\x7F",
      "\u0080",   "\u00E9",   "\u00FF",       "\u0100",     "\u0FFF",     "\u1000",
      "\u4E2D",   "\uFFFD",   "\uFFFF",       "\U00010000", "\U0001F600", "\U0010FFFF",
      "\x80",     "\xBF",     "\xC0",         "\xC3",       "\xE0",       "\xE4\xB8",
      "\xED\xA0", "\xF0\x9F", "\xF0\x9F\x98", "\xF4\x90",   "\xF5",       "\xFF"};
  std::mt19937 random(7201);
  for (int round = 0; round < 50'000; ++round) {
    std::string text;
    for (std::size_t count = random() % 12; count > 0; --count) {
      text += PIECES[random() % std::size(PIECES)];
    }
    ASSERT_EQ(encode_utf8_to_step(text), encode_unit_by_unit(text)) << testing::PrintToString(text);
  }
}

TEST(EncodeComparison, RandomBytesEncodeAsUnitByUnit) {
  std::mt19937 random(7202);
  for (int round = 0; round < 50'000; ++round) {
    std::string text;
    for (std::size_t count = random() % 12; count > 0; --count) {
      text += static_cast<char>(random() % 4 == 0 ? random() % 256 : 0x80 + random() % 128);
    }
    ASSERT_EQ(encode_utf8_to_step(text), encode_unit_by_unit(text)) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace Kessel::test
