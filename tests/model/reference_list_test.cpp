// The references of one record, packed by the store or grown by a host.
#include "kessel/reference_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace Kessel::test {
namespace {

using Numbers = std::vector<std::uint32_t>;

Numbers numbers_of(const ReferenceList& list) {
  const auto numbers = list.numbers();
  return {numbers.begin(), numbers.end()};
}

/// Expects that both forms of the list hold `expected`.
void expect_numbers(const ReferenceList& list, const Numbers& expected) {
  EXPECT_EQ(numbers_of(list), expected);
  EXPECT_EQ(list.as_vector(), expected);
  EXPECT_EQ(numbers_of(list), expected);
}

TEST(ReferenceList, NewListIsEmpty) {
  expect_numbers(ReferenceList(), {});
}

TEST(ReferenceList, AppendedNumbersStayInOrderWithDuplicatesAndZero) {
  ReferenceList list;
  for (const std::uint32_t number : {7u, 3u, 7u, 0u, 4'294'967'295u}) list.append(number);
  expect_numbers(list, {7, 3, 7, 0, 4'294'967'295});
}

TEST(ReferenceList, ViewShowsThePackedNumbersWhereTheyStand) {
  const std::uint32_t packed[] = {3, 10, 11, 10};
  ReferenceList list;
  list.view(packed);
  EXPECT_EQ(list.numbers().data(), packed + 1);
  expect_numbers(list, {10, 11, 10});
}

TEST(ReferenceList, EmptyPackedBlockIsAnEmptyList) {
  const std::uint32_t packed[] = {0};
  ReferenceList list;
  list.view(packed);
  expect_numbers(list, {});
}

TEST(ReferenceList, AppendingToAViewLeavesThePackedNumbersAlone) {
  std::uint32_t packed[] = {2, 10, 11, 99};
  ReferenceList list;
  list.view(packed);
  list.append(12);
  packed[1] = 1;
  expect_numbers(list, {10, 11, 12});
  EXPECT_EQ(packed[0], 2u);
  EXPECT_EQ(packed[3], 99u);
}

TEST(ReferenceList, ViewReplacesWhatWasThere) {
  const std::uint32_t packed[] = {1, 5};
  ReferenceList list;
  list.append(1);
  list.append(2);
  list.view(packed);
  expect_numbers(list, {5});
}

TEST(ReferenceList, VectorIsTheSameOneAtEveryCall) {
  const std::uint32_t packed[] = {1, 5};
  ReferenceList list;
  list.view(packed);
  EXPECT_EQ(&list.as_vector(), &list.as_vector());
}

TEST(ReferenceList, MoveTakesTheNumbersAndLeavesAnEmptyUsableList) {
  const std::uint32_t packed[] = {2, 10, 11};
  ReferenceList viewing;
  viewing.view(packed);
  ReferenceList owning;
  owning.append(20);

  ReferenceList from_viewing(std::move(viewing));
  ReferenceList from_owning(std::move(owning));
  expect_numbers(from_viewing, {10, 11});
  expect_numbers(from_owning, {20});
  expect_numbers(viewing, {});
  expect_numbers(owning, {});
  owning.append(21);
  expect_numbers(owning, {21});
  expect_numbers(from_owning, {20});
}

TEST(ReferenceList, VectorThatWasAskedForStaysWithItsList) {
  ReferenceList source;
  const std::vector<std::uint32_t>& vector = source.as_vector();
  source.append(1);
  EXPECT_EQ(vector, (std::vector<std::uint32_t>{1}));
  ReferenceList target(std::move(source));
  expect_numbers(target, {1});
  EXPECT_TRUE(vector.empty());
  source.append(2);
  source.shrink_to_fit();
  EXPECT_EQ(vector, (std::vector<std::uint32_t>{2}));
}

TEST(ReferenceList, ShrinkingGivesBackSpareCapacity) {
  ReferenceList list;
  for (std::uint32_t number = 0; number < 1'000; ++number) list.append(number);
  ASSERT_GT(list.as_vector().capacity(), 1'000u);
  list.shrink_to_fit();
  EXPECT_EQ(list.as_vector().capacity(), 1'000u);
  EXPECT_EQ(list.as_vector().back(), 999u);
}

TEST(ReferenceList, ShrinkingAnEmptyListLeavesNoBuffer) {
  const std::uint32_t packed[] = {0};
  ReferenceList list;
  list.view(packed);
  ASSERT_TRUE(list.as_vector().empty());
  list.shrink_to_fit();
  EXPECT_EQ(list.as_vector().capacity(), 0u);
  expect_numbers(list, {});
}

TEST(ReferenceList, ShrinkingAViewChangesNothing) {
  const std::vector<std::uint32_t> packed = {1, 5};
  ReferenceList list;
  list.view(packed.data());
  list.shrink_to_fit();
  EXPECT_EQ(list.numbers().data(), packed.data() + 1);
}

TEST(ReferenceList, TakesEightBytes) {
  EXPECT_EQ(sizeof(ReferenceList), 8u);
}

}  // namespace
}  // namespace Kessel::test
