// The encoder against a plain one.
#include <gtest/gtest.h>

#include <cstdint>
#include <ios>
#include <random>
#include <string>
#include <string_view>

#include "encoding/plain_encoding.h"
#include "encoding/unicode.h"
#include "kessel/encoding.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

using plain::encode_unit_by_unit;

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
  for (std::uint64_t round = 0; round < tries(50'000); ++round) {
    std::string text;
    for (std::size_t count = random() % 12; count > 0; --count) {
      text += PIECES[random() % std::size(PIECES)];
    }
    ASSERT_EQ(encode_utf8_to_step(text), encode_unit_by_unit(text)) << testing::PrintToString(text);
  }
}

TEST(EncodeComparison, RandomBytesEncodeAsUnitByUnit) {
  std::mt19937 random(7202);
  for (std::uint64_t round = 0; round < tries(50'000); ++round) {
    std::string text;
    for (std::size_t count = random() % 12; count > 0; --count) {
      text += static_cast<char>(random() % 4 == 0 ? random() % 256 : 0x80 + random() % 128);
    }
    ASSERT_EQ(encode_utf8_to_step(text), encode_unit_by_unit(text)) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace Kessel::test
