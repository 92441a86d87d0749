// Which characters are visible.
#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <array>
#include <cstdint>
#include <ios>

#include "encoding/unicode.h"

namespace Kessel::test {
namespace {

/// Whether the Unicode version of our table has the character at all.
bool known_to_the_table(UChar32 c) {
  std::array<std::uint8_t, U_MAX_VERSION_LENGTH> age{};
  u_charAge(c, age.data());
  return age[0] <= 15 && !(age[0] == 15 && age[1] > 0);
}

TEST(Graphic, LettersMarksNumbersPunctuationAndSymbolsAre) {
  for (const char16_t c : {u'A', u'z', u'Ä', u'中', u'\u0301', u'7', u'½', u'!', u'_', u'«', u'+',
                           u'$', u'^', u'©', u'\uFFFD'}) {
    EXPECT_TRUE(is_graphic(c)) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(Graphic, SeparatorsControlsSurrogatesPrivateAndUnassignedCodePointsAreNot) {
  for (const char16_t c :
       {u' ', u'\u00A0', u'\u2028', u'\u2029', u'\u3000', u'\0', u'\n', u'\x7F', u'\u0085',
        u'\u00AD', u'\u200B', u'\uFEFF', char16_t{0xD800}, char16_t{0xDFFF}, u'\uE000', u'\uF8FF',
        u'\u0378', char16_t{0xFFFE}, char16_t{0xFFFF}}) {
    EXPECT_FALSE(is_graphic(c)) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(Graphic, EveryValueOf16BitsIsByItsGeneralCategory) {
  std::array<std::uint8_t, U_MAX_VERSION_LENGTH> version{};
  u_getUnicodeVersion(version.data());
  if (version[0] < 15) GTEST_SKIP() << "this ICU is older than our table";
  constexpr std::uint32_t GRAPHIC =
      U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK | U_GC_P_MASK | U_GC_S_MASK;
  int graphic = 0;
  for (UChar32 c = 0; c <= 0xFFFF; ++c) {
    const bool expected = (U_GET_GC_MASK(c) & GRAPHIC) != 0 && known_to_the_table(c);
    ASSERT_EQ(is_graphic(static_cast<char16_t>(c)), expected) << std::hex << c;
    graphic += expected ? 1 : 0;
  }
  EXPECT_GT(graphic, 50'000);
}

}  // namespace
}  // namespace Kessel::test
