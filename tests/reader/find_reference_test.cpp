// The search for references outside string literals.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "reader/text.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

/// Where the first "#" outside literals is, by one loop over the characters.
std::optional<std::size_t> find_reference_plainly(std::string_view text) {
  bool inside_literal = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\'') inside_literal = !inside_literal;
    if (text[i] == '#' && !inside_literal) return i;
  }
  return std::nullopt;
}

/// A text at a chosen alignment, with marks before it and nothing at all behind it.
class PlacedText {
 public:
  PlacedText(std::string_view text, std::size_t alignment)
      : buffer_(std::make_unique<char[]>(alignment + text.size())), size_(text.size()) {
    std::fill_n(buffer_.get(), alignment, '#');
    begin_ = std::copy(text.begin(), text.end(), buffer_.get() + alignment) - text.size();
  }
  std::optional<std::size_t> reference() const {
    const char* found = find_reference(begin_, begin_ + size_);
    if (found == nullptr) return std::nullopt;
    return static_cast<std::size_t>(found - begin_);
  }

 private:
  std::unique_ptr<char[]> buffer_;
  std::size_t size_;
  const char* begin_;
};

TEST(FindReference, ReferencesInsideLiteralsAreJumpedOver) {
  EXPECT_EQ(PlacedText("('#4',(#5))", 0).reference(), 7u);
  EXPECT_EQ(PlacedText("('a text of more than eight characters #4',#5)", 0).reference(), 43u);
  EXPECT_EQ(PlacedText("#5", 0).reference(), 0u);
  EXPECT_EQ(PlacedText("('',#5)", 0).reference(), 4u);
}

TEST(FindReference, DoubledApostropheGoesOnWithTheLiteral) {
  EXPECT_EQ(PlacedText("('it''s #4',#5)", 0).reference(), 12u);
}

TEST(FindReference, ThereIsNoneWithoutANumberSignOutsideLiterals) {
  EXPECT_EQ(PlacedText("", 0).reference(), std::nullopt);
  EXPECT_EQ(PlacedText("(0.,0.)", 0).reference(), std::nullopt);
  EXPECT_EQ(PlacedText("('#4')", 0).reference(), std::nullopt);
}

TEST(FindReference, ThereIsNoneBehindAnUnclosedLiteral) {
  EXPECT_EQ(PlacedText("'", 0).reference(), std::nullopt);
  EXPECT_EQ(PlacedText("('#4", 0).reference(), std::nullopt);
  EXPECT_EQ(PlacedText("('a','b #4 and more than eight characters", 0).reference(), std::nullopt);
}

TEST(FindReference, RandomTextsAtAllAlignmentsAreSearchedAsByAPlainLoop) {
  std::mt19937 random(3104);
  for (std::uint64_t round = 0; round < tries(100'000); ++round) {
    std::string text(random() % 80, ' ');
    const auto rarity = 2 + random() % 20;  // One mark in so many characters.
    for (char& c : text) {
      c = random() % rarity != 0 ? "ab,(\xA3"[random() % 5] : (random() % 3 == 0 ? '#' : '\'');
    }
    ASSERT_EQ(PlacedText(text, random() % 16).reference(), find_reference_plainly(text)) << text;
  }
}

}  // namespace
}  // namespace Kessel::test
