// The large array of which only the pages in use take memory.
#include "model/paged_array.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Kessel::test {
namespace {

TEST(PagedArray, NewArrayHasItsSizeAndDefaultElements) {
  const PagedArray<int> array(10'000);
  EXPECT_EQ(array.size(), 10'000u);
  for (std::size_t i = 0; i < array.size(); ++i) ASSERT_EQ(array[i], 0);
  EXPECT_EQ(PagedArray<int>().size(), 0u);
}

TEST(PagedArray, WrittenElementsAreReadBackAndTheOthersStayDefault) {
  PagedArray<int> array(20'000);
  for (const std::size_t i : {0u, 4095u, 4096u, 8191u, 19'999u})
    array.edit(i) = static_cast<int>(i) + 1;
  for (std::size_t i = 0; i < array.size(); ++i) {
    const bool written = i == 0 || i == 4095 || i == 4096 || i == 8191 || i == 19'999;
    ASSERT_EQ(array[i], written ? static_cast<int>(i) + 1 : 0);
  }
}

TEST(PagedArray, GrowingKeepsTheElementsAndAddsDefaultOnes) {
  PagedArray<int> array(3);
  array.edit(2) = 7;
  array.grow(5'000);
  EXPECT_EQ(array.size(), 5'000u);
  EXPECT_EQ(array[2], 7);
  EXPECT_EQ(array[3], 0);
  EXPECT_EQ(array[4'999], 0);
  array.edit(4'999) = 8;
  array.grow(5'000);
  EXPECT_EQ(array[4'999], 8);
}

TEST(PagedArray, ReferencesStayValidWhileTheArrayGrows) {
  PagedArray<int> array(10);
  int& element = array.edit(3);
  array.grow(1'000'000);
  for (std::size_t i = 0; i < 1'000'000; i += 4096) array.edit(i) = 1;
  element = 5;
  EXPECT_EQ(array[3], 5);
}

TEST(PagedArray, WholeRangeOf32BitsIsNoBurden) {
  PagedArray<int> array(std::size_t{1} << 32);
  array.edit(0) = 1;
  array.edit(UINT32_MAX) = 2;
  EXPECT_EQ(array.size(), 4'294'967'296u);
  EXPECT_EQ(array[0], 1);
  EXPECT_EQ(array[2'000'000'000], 0);
  EXPECT_EQ(array[UINT32_MAX], 2);
}

using Visits = std::vector<std::pair<std::size_t, int>>;

Visits visits_of(const PagedArray<int>& array) {
  Visits visits;
  array.for_each_in_use([&](std::size_t i, int element) { visits.emplace_back(i, element); });
  return visits;
}

TEST(PagedArray, VisitGoesOverThePagesInUseInAscendingOrder) {
  PagedArray<int> array(20'000);
  array.edit(13'000) = 2;
  array.edit(1) = 1;
  Visits expected;
  for (std::size_t i = 0; i < 4'096; ++i) expected.emplace_back(i, i == 1 ? 1 : 0);
  for (std::size_t i = 12'288; i < 16'384; ++i) expected.emplace_back(i, i == 13'000 ? 2 : 0);
  EXPECT_EQ(visits_of(array), expected);
}

TEST(PagedArray, VisitStopsAtTheSize) {
  PagedArray<int> array(4'099);
  array.edit(4'097) = 3;
  EXPECT_EQ(visits_of(array), (Visits{{4'096, 0}, {4'097, 3}, {4'098, 0}}));
}

TEST(PagedArray, VisitOfAnUntouchedArraySeesNothing) {
  EXPECT_EQ(visits_of(PagedArray<int>(20'000)), Visits());
}

TEST(PagedArray, MovedArrayKeepsItsElements) {
  PagedArray<int> source(5'000);
  source.edit(4'500) = 9;
  PagedArray<int> array(std::move(source));
  EXPECT_EQ(array.size(), 5'000u);
  EXPECT_EQ(array[4'500], 9);
  PagedArray<int> assigned;
  assigned = std::move(array);
  EXPECT_EQ(assigned.size(), 5'000u);
  EXPECT_EQ(assigned[4'500], 9);
}

TEST(PagedArray, CountsItsBytesWithAnElementInUse) {
  constexpr std::uint64_t PAGE = 4096 * sizeof(std::uint32_t);
  constexpr std::uint64_t POINTER = sizeof(void*);
  PagedArray<std::uint32_t> array(3 * 4096);
  EXPECT_EQ(array.bytes_with(0), PAGE + 3 * POINTER);
  EXPECT_EQ(array.bytes_with(5 * 4096), PAGE + 6 * POINTER);
  array.edit(7) = 1;
  EXPECT_EQ(array.bytes_with(0), PAGE + 3 * POINTER);
  EXPECT_EQ(array.bytes_with(4096), 2 * PAGE + 3 * POINTER);
  EXPECT_EQ(array.bytes_with(UINT32_MAX), 2 * PAGE + 1'048'576 * POINTER);
}

}  // namespace
}  // namespace Kessel::test
