// UTF-8 taken apart and put together, character by character.
#include <gtest/gtest.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "encoding/unicode.h"

namespace Kessel::test {
namespace {

/// The characters of `text` and whether all of it was good.
struct Taken {
  std::u32string characters;
  bool valid = true;
  bool operator==(const Taken&) const = default;
};

Taken take_all(std::string_view text) {
  Taken taken;
  while (!text.empty()) taken.characters += take_utf8(text, taken.valid);
  return taken;
}

/// The same by ICU, whose macro replaces maximal parts of bad sequences too.
Taken take_all_by_icu(std::string_view text) {
  Taken taken;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  const auto length = static_cast<std::int32_t>(text.size());
  for (std::int32_t at = 0; at < length;) {
    UChar32 c = 0;
    U8_NEXT(bytes, at, length, c);
    if (c < 0) taken.valid = false;
    taken.characters += c < 0 ? U'\uFFFD' : static_cast<char32_t>(c);
  }
  return taken;
}

TEST(Utf8, CharactersAreAppendedInOneToFourBytes) {
  struct Row {
    char32_t character;
    std::string bytes;
  };
  const std::vector<Row> rows = {{0x00, std::string(1, '\0')},
                                 {0x41, "A"},
                                 {0x7F, "\x7F"},
                                 {0x80, "\xC2\x80"},
                                 {0x7FF, "\xDF\xBF"},
                                 {0x800, "\xE0\xA0\x80"},
                                 {0xD7FF, "\xED\x9F\xBF"},
                                 {0xE000, "\xEE\x80\x80"},
                                 {0xFFFF, "\xEF\xBF\xBF"},
                                 {0x10000, "\xF0\x90\x80\x80"},
                                 {0x10FFFF, "\xF4\x8F\xBF\xBF"}};
  for (const auto& [character, bytes] : rows) {
    std::string text = "x";
    append_utf8(text, character);
    EXPECT_EQ(text, "x" + bytes);
  }
}

TEST(Utf8, EveryCharacterComesBackAsItWasAppended) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c == 0xD800) c = 0xE000;
    std::string text;
    append_utf8(text, c);
    text += 'z';
    std::string_view rest = text;
    bool valid = true;
    ASSERT_EQ(take_utf8(rest, valid), c);
    ASSERT_EQ(rest, "z");
    ASSERT_TRUE(valid);
  }
}

TEST(Utf8, GoodCharacterLeavesTheVerdictOnEarlierOnesAlone) {
  std::string_view text = "\xFFz";
  bool valid = true;
  EXPECT_EQ(take_utf8(text, valid), U'\uFFFD');
  EXPECT_FALSE(valid);
  EXPECT_EQ(take_utf8(text, valid), U'z');
  EXPECT_FALSE(valid);
  EXPECT_EQ(text, "");
}

TEST(Utf8, ReplacementCharacterInTheTextIsNoError) {
  EXPECT_EQ(take_all("\xEF\xBF\xBD"), (Taken{U"\uFFFD", true}));
}

TEST(Utf8, EachMaximalPartOfABadSequenceGivesOneReplacementCharacter) {
  struct Row {
    std::string_view bytes;
    std::u32string characters;
  };
  const std::vector<Row> rows = {
      {"\x80", U"\uFFFD"},
      {"\xC3", U"\uFFFD"},
      {"\xC3(", U"\uFFFD("},
      {"\xC3\xC3\xA4", U"\uFFFDä"},
      {"\xE4\xB8", U"\uFFFD"},
      {"\xE4\xB8z", U"\uFFFDz"},
      {"\xF0\x9F\x98", U"\uFFFD"},
      {"\xF0\x9F\x98z", U"\uFFFDz"},
      {"\xF1\x80\x80\xE1\x80\xC2z", U"\uFFFD\uFFFD\uFFFDz"},
      {"\xC1\xBF", U"\uFFFD\uFFFD"},                      // overlong
      {"\xE0\x9F\xBF", U"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xF0\x8F\xBF\xBF", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // overlong
      {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},            // surrogate
      {"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
      {"\xF5\x80\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // no lead byte
  };
  for (const auto& [bytes, characters] : rows) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    EXPECT_EQ(take_all(bytes), (Taken{characters, false}));
  }
}

TEST(Utf8, EveryTextOfTwoBytesIsTakenAsByIcu) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const char bytes[] = {static_cast<char>(first), static_cast<char>(second)};
      ASSERT_EQ(take_all({bytes, 2}), take_all_by_icu({bytes, 2})) << first << ' ' << second;
    }
  }
}

TEST(Utf8, EveryTextOfFourBytesAtTheBordersIsTakenAsByIcu) {
  // The first and last bytes of the ranges in which a sequence may go on, and its lead bytes.
  constexpr std::string_view BORDERS =
      "\x41\x80\x8F\x90\x9F\xA0\xBF\xC2\xDF\xE0\xE1\xED\xEF\xF0\xF4\xF5";
  for (const char a : BORDERS) {
    for (const char b : BORDERS) {
      for (const char c : BORDERS) {
        for (const char d : BORDERS) {
          const char bytes[] = {a, b, c, d};
          const std::string_view text(bytes, 4);
          ASSERT_EQ(take_all(text), take_all_by_icu(text)) << testing::PrintToString(text);
        }
      }
    }
  }
}

}  // namespace
}  // namespace Kessel::test
