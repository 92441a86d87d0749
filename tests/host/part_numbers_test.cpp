// What people do with an ordered map, done with the numbers of a record.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "kessel/entity.h"
#include "kessel/part.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

static_assert(std::is_same_v<decltype(*std::declval<PartNumbers&>().begin()),
                             std::pair<Part* const, std::uint32_t>&>);
static_assert(std::is_same_v<PartNumbers::key_type, Part*>);
static_assert(std::is_same_v<PartNumbers::mapped_type, std::uint32_t>);
static_assert(std::bidirectional_iterator<PartNumbers::iterator>);

/// Three parts in the order of a list, and the numbers of a record.
class HostPartNumbers : public testing::Test {
 protected:
  HostPartNumbers() {
    // In memory the other way round than in the list.
    for (std::uint32_t i = 0; i < 3; ++i) parts_[i].list_position = 2 - i;
  }

  Part parts_[3] = {Part(std::string_view("A")), Part(std::string_view("A")),
                    Part(std::string_view("A"))};
  Part* const a = &parts_[2];
  Part* const b = &parts_[1];
  Part* const c = &parts_[0];
  Entity record;
  PartNumbers& numbers = record.part_numbers;
};

TEST_F(HostPartNumbers, EntriesComeByIndexInsertionAndEmplacement) {
  numbers[c] = 3;
  EXPECT_TRUE(numbers.insert({a, 1}).second);
  EXPECT_EQ(numbers.emplace(b, 2).first->second, 2u);
  EXPECT_FALSE(numbers.emplace(b, 9).second);
  EXPECT_FALSE(numbers.insert(std::make_pair(a, 9)).second);
  EXPECT_FALSE(numbers.try_emplace(c, 9).second);
  EXPECT_THAT(numbers, ElementsAre(Pair(a, 1), Pair(b, 2), Pair(c, 3)));
  EXPECT_FALSE(numbers.insert_or_assign(b, 20).second);
  EXPECT_EQ(++numbers[b], 21u);
  numbers.at(a) += 10;
  EXPECT_THAT(numbers, ElementsAre(Pair(a, 11), Pair(b, 21), Pair(c, 3)));
}

TEST_F(HostPartNumbers, EntriesAreCountedFoundAndErased) {
  numbers = {{b, 2}, {a, 1}};
  EXPECT_EQ(numbers.size(), 2u);
  EXPECT_EQ(numbers.count(a), 1u);
  EXPECT_EQ(numbers.count(c), 0u);
  EXPECT_FALSE(numbers.contains(c));
  EXPECT_EQ(numbers.find(c), numbers.end());
  EXPECT_EQ(numbers.find(b)->second, 2u);
  EXPECT_EQ(numbers.lower_bound(b)->first, b);
  EXPECT_EQ(numbers.upper_bound(b), numbers.end());
  EXPECT_THROW(numbers.at(c), std::out_of_range);

  EXPECT_EQ(numbers.erase(c), 0u);
  EXPECT_EQ(numbers.erase(a), 1u);
  EXPECT_THAT(numbers, ElementsAre(Pair(b, 2)));
  EXPECT_EQ(numbers.erase(numbers.begin()), numbers.end());
  EXPECT_TRUE(numbers.empty());
  numbers[a] = 1;
  numbers.clear();
  EXPECT_EQ(numbers.size(), 0u);
  EXPECT_THAT(numbers, IsEmpty());
}

TEST_F(HostPartNumbers, LoopsChangeNumbersByReference) {
  numbers = {{a, 1}, {b, 2}, {c, 3}};
  for (auto& [part, number] : numbers) number *= part == b ? 100 : 10;
  for (auto& entry : numbers) entry.second += 1;
  for (auto at = numbers.begin(); at != numbers.end(); ++at) at->second += 1;
  const PartNumbers& same = numbers;
  std::string order;
  for (const auto& [part, number] : same) order += std::to_string(number) + " ";
  EXPECT_EQ(order, "12 202 32 ");
  EXPECT_EQ(numbers.rbegin()->first, c);
  EXPECT_TRUE(std::any_of(same.begin(), same.end(), [](const auto& e) { return e.second == 202; }));
}

TEST_F(HostPartNumbers, ReferencesStayValidWhileOthersComeAndGo) {
  std::uint32_t& number = numbers[b];
  std::pair<Part* const, std::uint32_t>& entry = *numbers.begin();
  const auto at = numbers.find(b);
  numbers[a] = 1;
  numbers[c] = 3;
  numbers.erase(a);
  number = 5;
  EXPECT_EQ(entry.second, 5u);
  EXPECT_EQ(at->second, 5u);
  const Entity moved(std::move(record));
  number = 6;
  EXPECT_EQ(moved.part_numbers.at(b), 6u);
  EXPECT_EQ(&moved.part_numbers.find(b)->second, &number);
}

TEST_F(HostPartNumbers, CopiesAndComparesLikeAMap) {
  numbers = {{a, 1}, {c, 3}};
  PartNumbers copy = numbers;
  EXPECT_EQ(copy, numbers);
  copy[a] = 9;
  EXPECT_NE(copy, numbers);
  EXPECT_EQ(numbers.at(a), 1u);
  swap(copy, numbers);
  EXPECT_EQ(numbers.at(a), 9u);
  const PartNumbers some(std::next(copy.begin()), copy.end());
  EXPECT_THAT(some, ElementsAre(Pair(c, 3)));
}

}  // namespace
}  // namespace Kessel::test
