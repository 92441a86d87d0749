#include "instances/number_index.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

namespace Kessel {
namespace {

using testing::ElementsAre;

struct Entered {
  NumberIndex index;
  std::vector<Repeated> repeated;
};

Entered enter(const std::vector<std::uint64_t>& numbers) {
  const auto [smallest, largest] = std::minmax_element(numbers.begin(), numbers.end());
  Entered entered{NumberIndex(numbers.size(), *smallest, *largest), {}};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    entered.index.enter(numbers[i], static_cast<Index>(i));
  }
  entered.repeated = entered.index.finish();
  EXPECT_EQ(entered.index.bytes(), NumberIndex::bytes_for(numbers.size(), *smallest, *largest));
  return entered;
}

constexpr std::uint64_t MOST = ~std::uint64_t{0};

TEST(NumberIndex, OfNothingFindsNothing) {
  const NumberIndex index;
  for (const std::uint64_t number : {std::uint64_t{0}, std::uint64_t{1}, MOST}) {
    EXPECT_EQ(index.find(number), NO_RECORD);
  }
}

TEST(NumberIndex, FindsDenseNumbersInAnyOrder) {
  const NumberIndex index = enter({3, 1, 2, 1000}).index;
  EXPECT_EQ(index.find(3), 0u);
  EXPECT_EQ(index.find(1), 1u);
  EXPECT_EQ(index.find(2), 2u);
  EXPECT_EQ(index.find(1000), 3u);
  for (const std::uint64_t number :
       {std::uint64_t{0}, std::uint64_t{4}, std::uint64_t{1001}, MOST}) {
    EXPECT_EQ(index.find(number), NO_RECORD) << number;
  }
}

TEST(NumberIndex, IsAnArrayWhereverDenseNumbersBegin) {
  std::vector<std::uint64_t> numbers;
  for (std::uint64_t i = 0; i < 1000; ++i) numbers.push_back(MOST - i);
  const NumberIndex index = enter(numbers).index;
  EXPECT_EQ(index.bytes(), 4000u);
  EXPECT_EQ(index.find(MOST), 0u);
  EXPECT_EQ(index.find(MOST - 999), 999u);
  EXPECT_EQ(index.find(MOST - 1000), NO_RECORD);
  EXPECT_EQ(index.find(0), NO_RECORD);
}

TEST(NumberIndex, FindsScatteredNumbers) {
  const NumberIndex index = enter({MOST, 0, 5'000'000, 7}).index;
  EXPECT_EQ(index.bytes(), 64u);
  EXPECT_EQ(index.find(MOST), 0u);
  EXPECT_EQ(index.find(0), 1u);
  EXPECT_EQ(index.find(5'000'000), 2u);
  EXPECT_EQ(index.find(7), 3u);
  for (const std::uint64_t number : {std::uint64_t{1}, std::uint64_t{6'000'000}, MOST - 1}) {
    EXPECT_EQ(index.find(number), NO_RECORD) << number;
  }
}

TEST(NumberIndex, KeepsTheFirstOfANumber) {
  for (const std::uint64_t far : {std::uint64_t{9}, MOST}) {
    const Entered entered = enter({7, far, 7, far, 7, 8});
    EXPECT_EQ(entered.index.find(7), 0u);
    EXPECT_EQ(entered.index.find(far), 1u);
    EXPECT_THAT(entered.repeated, ElementsAre(Repeated{0, 2}, Repeated{1, 3}, Repeated{0, 4}));
  }
}

TEST(NumberIndex, AgreesWithAMap) {
  std::mt19937_64 random(4);
  for (const int bits : {1, 8, 12, 14, 20, 64}) {
    std::vector<std::uint64_t> numbers;
    std::map<std::uint64_t, Index> first;
    for (Index i = 0; i < 2000; ++i) {
      const std::uint64_t number = random() >> (64 - bits);
      numbers.push_back(number);
      first.emplace(number, i);
    }
    const Entered entered = enter(numbers);
    EXPECT_EQ(entered.repeated.size(), 2000 - first.size());
    for (const auto& [number, record] : first) {
      ASSERT_EQ(entered.index.find(number), record);
      ASSERT_EQ(entered.index.find(number + 1),
                first.count(number + 1) != 0 ? first[number + 1] : NO_RECORD);
    }
  }
}

TEST(NumberIndex, IsFastForNumbersThatAreChosenToBeSlow) {
  // Multiples of powers of two, and of the inverse of a well-known factor of hash functions.
  constexpr Index COUNT = 200'000;
  for (const std::uint64_t factor : {std::uint64_t{1} << 40, std::uint64_t{0xF1DE83E19937733D}}) {
    std::vector<std::uint64_t> numbers;
    for (std::uint64_t i = 0; i < COUNT; ++i) numbers.push_back((i << 24) * factor + (i << 40));
    const Entered entered = enter(numbers);
    for (const Repeated& repeated : entered.repeated) {
      ASSERT_EQ(numbers[repeated.first], numbers[repeated.second]);
    }
    for (Index i = 0; i < COUNT; ++i) {
      ASSERT_EQ(numbers[entered.index.find(numbers[i])], numbers[i]);
    }
  }
}

}  // namespace
}  // namespace Kessel
