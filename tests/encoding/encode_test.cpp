// UTF-8 text encoded as the body of a string literal.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "kessel/encoding.h"

namespace Kessel::test {
namespace {

using namespace std::string_view_literals;

struct EncodeCase {
  std::string_view text;
  std::string_view expected;
};

void expect_encoded(const std::vector<EncodeCase>& cases) {
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(testing::PrintToString(text));
    EXPECT_EQ(encode_utf8_to_step(text), expected);
  }
}

TEST(Encode, EmptyTextGivesNothing) {
  EXPECT_EQ(encode_utf8_to_step(""), "");
}

TEST(Encode, AsciiStaysAsItIs) {
  expect_encoded({{"abc", "abc"}, {"#12_part_(2)_.stp", "#12_part_(2)_.stp"}, {" a ", " a "}});
}

TEST(Encode, ApostrophesAndBackslashesAreDoubled) {
  expect_encoded({{"it's", "it''s"},
                  {"'", "''"},
                  {"''", "''''"},
                  {R"(\)", R"(\\)"},
                  {R"(out\a.stp)", R"(out\\a.stp)"},
                  {R"(\'\)", R"(\\''\\)"}});
}

TEST(Encode, ControlCharactersStayAsTheyAre) {
  expect_encoded({{"a\tb\n", "a\tb\n"}, {"\0\x1F\x7F"sv, "\0\x1F\x7F"sv}});
}

TEST(Encode, CharactersUpTo255BecomeSingleBytes) {
  expect_encoded({{"\u00E9", "\xE9"},
                  {"\u0080", "\x80"},
                  {"\u00A0", "\xA0"},
                  {"\u00FF", "\xFF"},
                  {"x\u00C4y", "x\xC4y"}});
}

TEST(Encode, CharactersFrom4096GiveFourUpperCaseDigits) {
  expect_encoded({{"\u4E2D\u6587", R"(\X2\4E2D6587\X0\)"},
                  {"\u1000", R"(\X2\1000\X0\)"},
                  {"\uABCD", R"(\X2\ABCD\X0\)"},
                  {"\uFFFF", R"(\X2\FFFF\X0\)"}});
}

TEST(Encode, CharactersFrom256To4095GiveThreeDigitsAndAZeroByte) {
  expect_encoded({{"\u0100", "\\X2\\100\0\\X0\\"sv},
                  {"\u0FFF", "\\X2\\FFF\0\\X0\\"sv},
                  {"\u03A9\u0416",
                   "\\X2\\3A9\0"
                   "416\0\\X0\\"sv},
                  {"\u0101\u4E2D",
                   "\\X2\\101\0"
                   "4E2D\\X0\\"sv}});
}

TEST(Encode, WideRunIsClosedByTheNextNarrowCharacter) {
  expect_encoded({{"a\u4E2Dz", R"(a\X2\4E2D\X0\z)"},
                  {"\u4E2D\u00E9", "\\X2\\4E2D\\X0\\\xE9"},
                  {"\u4E2D'\u6587", R"(\X2\4E2D\X0\''\X2\6587\X0\)"},
                  {"\u4E2D\\", R"(\X2\4E2D\X0\\\)"}});
}

TEST(Encode, WideRunAtTheEndIsClosed) {
  expect_encoded({{"\u4E2D", R"(\X2\4E2D\X0\)"}, {"ab\u4E2D", R"(ab\X2\4E2D\X0\)"}});
}

TEST(Encode, CharactersBeyond16BitsGiveTwoSurrogatesInOneRun) {
  expect_encoded({{"\U0001F600", R"(\X2\D83DDE00\X0\)"},
                  {"\U00010000", R"(\X2\D800DC00\X0\)"},
                  {"\U0010FFFF", R"(\X2\DBFFDFFF\X0\)"},
                  {"\u4E2D\U0001F600\u6587", R"(\X2\4E2DD83DDE006587\X0\)"}});
}

TEST(Encode, BadSequencesBecomeReplacementCharacters) {
  expect_encoded({{"\xFF", R"(\X2\FFFD\X0\)"},
                  {"a\x80z", R"(a\X2\FFFD\X0\z)"},
                  {"\x80\x80", R"(\X2\FFFDFFFD\X0\)"},
                  {"\xC3", R"(\X2\FFFD\X0\)"},
                  {"\xC3z", R"(\X2\FFFD\X0\z)"}});
}

TEST(Encode, MaximalPartOfABadSequenceBecomesOneReplacementCharacter) {
  expect_encoded({{"\xE4\xB8z", R"(\X2\FFFD\X0\z)"},
                  {"\xF0\x9F\x98z", R"(\X2\FFFD\X0\z)"},
                  {"\xF0\x9F\x98\xE4\xB8\xAD", R"(\X2\FFFD4E2D\X0\)"},
                  {"\xC0\xAF", R"(\X2\FFFDFFFD\X0\)"},                    // overlong
                  {"\xE0\x80\xAF", R"(\X2\FFFDFFFDFFFD\X0\)"},            // overlong
                  {"\xED\xA0\x80", R"(\X2\FFFDFFFDFFFD\X0\)"},            // surrogate
                  {"\xF4\x90\x80\x80", R"(\X2\FFFDFFFDFFFDFFFD\X0\)"}});  // above U+10FFFF
}

}  // namespace
}  // namespace Kessel::test
