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
  const std::string behind(KeywordIds::READ_AHEAD, ';');
  for (const std::string_view keyword : KEYWORDS) {
    for (const char next : {'(', ' '}) {
      const std::string text = std::string(keyword) + next + behind;
      std::string_view found = "none";
      EXPECT_EQ(ids.recognise(text.data(), found), KeywordIds::NONE) << text;
      EXPECT_EQ(found, "none");
    }
  }
  for (const std::string_view keyword : KEYWORDS) ids.id_of(keyword);
  for (const std::string_view keyword : KEYWORDS) {
    for (const char next : {'(', ' ', '-', ',', '8', '\t'}) {
      const std::string text = std::string(keyword) + next + behind;
      std::string_view found = "none";
      const std::uint32_t id = ids.recognise(text.data(), found);
      if (id == KeywordIds::NONE) {
        EXPECT_EQ(found, "none");
        continue;
      }
      EXPECT_TRUE(next == '(' || next == ' ') << text;
      EXPECT_EQ(id, ids.id_of(keyword)) << text;
      EXPECT_EQ(found, keyword);
    }
  }
  std::string_view found = "none";
  EXPECT_EQ(ids.recognise(("(" + behind).data(), found), KeywordIds::NONE);
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
