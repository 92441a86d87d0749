#include "exchange/keyword_ids.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace Kessel::Exchange {
namespace {

// Of every length up to beyond two words, some of them alike at their ends.
const std::string_view KEYWORDS[] = {"A",
                                     "AB",
                                     "ABC",
                                     "LINE",
                                     "PLANE",
                                     "POINT",
                                     "ABCDEFG",
                                     "ABCDEFGH",
                                     "ABCDEFGHI",
                                     "CARTESIAN_POINT",
                                     "CARTESIAN_PAINT",
                                     "ABCDEFGH12345678",
                                     "ABCDEFGH1ABCDEFGH",
                                     "ABCDEFGH2ABCDEFGH",
                                     "!ABCDEFG",
                                     "A_KEYWORD_OF_MORE_THAN_THIRTY_TWO_BYTES"};

TEST(KeywordIds, CountKeywordsAsTheyAreMet) {
  KeywordIds ids;
  for (int times = 0; times < 2; ++times) {
    std::uint32_t expected = 0;
    for (const std::string_view keyword : KEYWORDS) {
      EXPECT_EQ(ids.id_of(keyword), expected++) << keyword;
    }
  }
}

TEST(KeywordIds, RecogniseOnlyWhatWasMetBefore) {
  KeywordIds ids;
  EXPECT_EQ(ids.recognise(""), KeywordIds::NONE);
  for (const std::string_view keyword : KEYWORDS) {
    EXPECT_EQ(ids.recognise(keyword), KeywordIds::NONE) << keyword;
    const std::uint32_t id = ids.id_of(keyword);
    EXPECT_EQ(ids.recognise(std::string(keyword)), id) << keyword;
    for (const char next : {'(', ' ', '-', ',', '\t'}) {
      const std::string longer = std::string(keyword) + next;
      EXPECT_EQ(ids.recognise(longer), KeywordIds::NONE) << longer;
    }
  }
  EXPECT_EQ(ids.recognise(""), KeywordIds::NONE);
}

TEST(KeywordIds, GoWithoutWhereThereAreTooMany) {
  KeywordIds ids;
  EXPECT_EQ(ids.id_of(std::string(129, 'A')), KeywordIds::NONE);
  for (std::uint32_t i = 0; i < 4096; ++i) ASSERT_EQ(ids.id_of("K" + std::to_string(i)), i);
  EXPECT_EQ(ids.id_of("L"), KeywordIds::NONE);
  EXPECT_EQ(ids.id_of("K4095"), 4095u);
}

}  // namespace
}  // namespace Kessel::Exchange
