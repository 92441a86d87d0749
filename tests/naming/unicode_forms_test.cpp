// Normal forms and case folding, judged by ICU.
#include "naming/unicode_forms.h"

#include <gtest/gtest.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <random>
#include <string>
#include <vector>

#include "support/effort.h"

namespace Kessel::test {
namespace {

icu::UnicodeString to_icu(const std::u32string& text) {
  return icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(text.data()),
                                       static_cast<int32_t>(text.size()));
}

std::u32string from_icu(const icu::UnicodeString& text) {
  std::u32string out;
  for (int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
    out += static_cast<char32_t>(text.char32At(i));
  }
  return out;
}

const icu::Normalizer2& form(bool composed) {
  UErrorCode error = U_ZERO_ERROR;
  return composed ? *icu::Normalizer2::getNFCInstance(error)
                  : *icu::Normalizer2::getNFDInstance(error);
}

std::u32string normalized(const std::u32string& text, bool composed) {
  UErrorCode error = U_ZERO_ERROR;
  return from_icu(form(composed).normalize(to_icu(text), error));
}

std::u32string expected_caseless(const std::u32string& text) {
  icu::UnicodeString folded = to_icu(normalized(text, false));
  folded.foldCase();
  return normalized(from_icu(folded), false);
}

/// Every character of Unicode 15 that is no surrogate. ICU may know later ones.
std::vector<char32_t> all_characters() {
  std::vector<char32_t> all;
  for (char32_t c = 1; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    UVersionInfo age;
    u_charAge(static_cast<UChar32>(c), age);
    if (age[0] <= 15) all.push_back(c);
  }
  return all;
}

TEST(UnicodeForms, SingleCharactersAreAsIcuHasThem) {
  const std::vector<char32_t> all = all_characters();
  ASSERT_GT(all.size(), 1'000'000u);
  const std::size_t step = all.size() / length_to_try(all.size());
  for (std::size_t i = 0; i < all.size(); i += step) {
    const char32_t c = all[i];
    const std::u32string text(1, c);
    ASSERT_EQ(to_composed_form(text), normalized(text, true)) << std::hex << +c;
    ASSERT_EQ(to_caseless_form(text), expected_caseless(text)) << std::hex << +c;
    ASSERT_EQ(is_combining(c), u_getCombiningClass(static_cast<UChar32>(c)) != 0) << std::hex << +c;
  }
}

// Characters that do something: those that decompose, marks, Hangul letters and a few plain ones.
TEST(UnicodeForms, RandomTextsAreAsIcuHasThem) {
  std::u32string interesting = U"aeoAEO \u1100\u1161\u11a8\uac00\uac01\u0301\u0308\u0323\u0327";
  for (const char32_t c : all_characters()) {
    const std::u32string text(1, c);
    if (c < 0xAC00 && (normalized(text, false) != text || is_combining(c))) interesting += c;
  }
  std::mt19937 random(7);
  const std::uint64_t rounds = tries(100'000);
  for (std::uint64_t i = 0; i < rounds; ++i) {
    std::u32string text;
    for (unsigned left = random() % 8; left > 0; --left) {
      // Half of them from the front, so that things that compose meet.
      const std::size_t count = random() % 2 == 0 ? 16 : interesting.size();
      text += interesting[random() % count];
    }
    ASSERT_EQ(to_composed_form(text), normalized(text, true)) << i;
    ASSERT_EQ(to_caseless_form(text), expected_caseless(text)) << i;
  }
}

TEST(UnicodeForms, TextsThatDifferInCaseOrFormOnlyAreOne) {
  EXPECT_EQ(to_caseless_form(U"Stra\u00dfe"), to_caseless_form(U"STRASSE"));
  EXPECT_EQ(to_caseless_form(U"\u00c5"), to_caseless_form(U"a\u030a"));
  EXPECT_EQ(to_caseless_form(U"\u212b"), to_caseless_form(U"\u00e5"));  // angstrom sign
  EXPECT_NE(to_caseless_form(U"\u00c5"), to_caseless_form(U"a"));
}

}  // namespace
}  // namespace Kessel::test
