// The cutter against a plain one.
#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "reader/plain_cutting.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

class RandomText {
 public:
  explicit RandomText(unsigned seed) : random_(seed) {}

  /// `length` characters, one in `rarity` of them a ";".
  std::string of(std::size_t length, unsigned long rarity) {
    constexpr std::string_view OTHERS = "#'() \n A1,=#)";
    std::string text(length, ' ');
    for (char& c : text) c = random_() % rarity == 0 ? ';' : OTHERS[random_() % OTHERS.size()];
    return text;
  }
  std::size_t below(std::size_t limit) { return random_() % limit; }

 private:
  std::mt19937 random_;
};

TEST(RecordCutterComparison, ShortRandomTextsAreCutAlike) {
  RandomText random(3105);
  for (std::uint64_t round = 0; round < tries(30'000); ++round) {
    const std::string text = random.of(random.below(50), 2 + random.below(6));
    const int lines = static_cast<int>(random.below(3));
    ASSERT_EQ(cut(text, lines), plain::cut(text, lines)) << testing::PrintToString(text);
  }
}

TEST(RecordCutterComparison, TextsLargerThanABlockAreCutAlike) {
  RandomText random(3106);
  for (const std::size_t rarity : {4u, 10u, 100u, 5'000u, 100'000u, 400'000u}) {
    for (int round = 0; round < 2; ++round) {
      SCOPED_TRACE(testing::Message() << "rarity " << rarity << ", round " << round);
      const std::string text = random.of(200'000 + random.below(500'000), rarity);
      const int lines = static_cast<int>(random.below(3));
      // Not ASSERT_EQ: a message with a megabyte helps nobody.
      ASSERT_TRUE(cut(text, lines) == plain::cut(text, lines));
    }
  }
}

TEST(RecordCutterComparison, EveryEndAtTheBorderOfABlockIsCutAlike) {
  constexpr std::size_t BLOCK = 262'144;
  RandomText random(3107);
  for (std::uint64_t round = 0; round < tries(100); ++round) {
    SCOPED_TRACE(round);
    const std::string first = "#1=A('" + std::string(BLOCK - 9 - random.below(30), 'x') + "');";
    const std::string text = first + random.of(random.below(60), 3);
    ASSERT_TRUE(cut(text, 0) == plain::cut(text, 0)) << text.substr(first.size());
  }
}

}  // namespace
}  // namespace Kessel::test
