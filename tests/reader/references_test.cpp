// The references in a record's text.
#include "reader/references.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/effort.h"

namespace Kessel::test {
namespace {

/// A reference and where its digits stand in the text.
struct Found {
  std::uint32_t number;
  std::size_t begin;
  std::size_t end;
  bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found) {
  return out << '#' << found.number << " at " << found.begin << '-' << found.end;
}

/// Searches a copy of `text` around which no byte may be touched.
std::vector<Found> found_in(std::string_view text) {
  const auto copy = std::make_unique<char[]>(text.size());
  std::copy(text.begin(), text.end(), copy.get());
  std::vector<Found> all;
  for_each_reference(std::string_view(copy.get(), text.size()),
                     [&](std::uint32_t number, const char* begin, const char* end) {
                       all.push_back({number, static_cast<std::size_t>(begin - copy.get()),
                                      static_cast<std::size_t>(end - copy.get())});
                     });
  return all;
}

/// The same by one loop over the characters.
std::vector<Found> found_plainly(const std::string& text) {
  std::vector<Found> all;
  bool inside_literal = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\'') inside_literal = !inside_literal;
    if (text[i] != '#' || inside_literal) continue;
    const std::size_t begin = i + 1;
    const std::size_t end = std::min(text.find_first_not_of("0123456789", begin), text.size());
    const std::string digits = text.substr(begin, end - begin);
    const unsigned long long number =
        digits.empty() || digits.size() > 15 ? 0 : std::stoull(digits);
    if (number == 0 || number > 4'294'967'295) break;
    all.push_back({static_cast<std::uint32_t>(number), begin, end});
  }
  return all;
}

using AllFound = std::vector<Found>;

TEST(References, ComeInOrderWithDuplicatesAndTheRecordsOwnNumberFirst) {
  EXPECT_EQ(found_in("#9=A('',(#10,#11,#10),#12)"),
            (AllFound{{9, 1, 2}, {10, 10, 12}, {11, 14, 16}, {10, 18, 20}, {12, 23, 25}}));
  EXPECT_EQ(found_in("#5=A(#6)"), (AllFound{{5, 1, 2}, {6, 6, 7}}));
}

TEST(References, ThereAreNoneInATextWithout) {
  EXPECT_EQ(found_in(""), AllFound());
  EXPECT_EQ(found_in("A"), AllFound());
  EXPECT_EQ(found_in("CARTESIAN_POINT('#4 is none',(0.,0.,0.))"), AllFound());
}

TEST(References, StopAtTheFirstWithoutAGoodNumber) {
  for (const std::string bad : {"#", "#x", "#0", "#000", "#4294967296", "# 7", "#99999999999999"}) {
    SCOPED_TRACE(bad);
    EXPECT_EQ(found_in("#9=A(#5," + bad + ",#6,#7,#8,#10,#11)"), (AllFound{{9, 1, 2}, {5, 6, 7}}));
    EXPECT_EQ(found_in(bad + "=A(#5)"), AllFound());
  }
}

TEST(References, StopAtAnUnclosedLiteral) {
  EXPECT_EQ(found_in("#9=A(#5,'x,#6,#7,#8,#10,#11)"), (AllFound{{9, 1, 2}, {5, 6, 7}}));
}

TEST(References, AreFoundAtEveryPlaceInTextsOfEveryLength) {
  for (std::size_t length = 2; length <= 70; ++length) {
    for (std::size_t place = 0; place + 1 < length; ++place) {
      std::string text(length, '.');
      text[place] = '#';
      text[place + 1] = '7';
      ASSERT_EQ(found_in(text), (AllFound{{7, place + 1, place + 2}})) << text;
    }
  }
}

TEST(References, RandomTextsGiveThoseOfAPlainLoop) {
  constexpr std::string_view PIECES[] = {"#",
                                         "#1",
                                         "#23",
                                         "#4567",
                                         "#12345678",
                                         "#4294967295",
                                         "'",
                                         "''",
                                         "'a'",
                                         "'#1'",
                                         ",",
                                         "(",
                                         "A=",
                                         " ",
                                         "0.",
                                         "\xA3\xA7\"!",
                                         "long text without marks"};
  std::mt19937 random(3108);
  for (std::uint64_t round = 0; round < tries(100'000); ++round) {
    std::string text = "#1=";
    const std::size_t first = random() % 8 == 0 ? 0 : 1;  // A "#" alone stops the search.
    for (std::size_t count = random() % 25; count > 0; --count) {
      text += PIECES[first + random() % (std::size(PIECES) - first)];
    }
    ASSERT_EQ(found_in(text), found_plainly(text)) << text;
  }
}

}  // namespace
}  // namespace Kessel::test
