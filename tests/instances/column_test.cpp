#include "instances/column.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace Kessel {
namespace {

using testing::ElementsAre;

template <class T>
std::vector<T> values(const Column<T>& column) {
  return {column.begin(), column.end()};
}

TEST(Column, IsEmptyAtFirst) {
  const Column<int> column;
  EXPECT_TRUE(column.empty());
  EXPECT_EQ(column.size(), 0u);
  EXPECT_EQ(column.bytes(), 0u);
  EXPECT_EQ(column.begin(), column.end());
  EXPECT_TRUE(column.part(0, 0).empty());
}

TEST(Column, KeepsWhatIsAppended) {
  Column<std::uint32_t> column;
  for (std::uint32_t i = 0; i < 100000; ++i) column.push_back(i * 7);
  ASSERT_EQ(column.size(), 100000u);
  for (std::uint32_t i = 0; i < 100000; ++i) ASSERT_EQ(column[i], i * 7);
  EXPECT_EQ(column.back(), 99999u * 7);
  EXPECT_GE(column.bytes(), 400000u);
  EXPECT_LE(column.bytes(), 600400u);
  column.shrink_to_fit();
  EXPECT_EQ(column.bytes(), 400000u);
  EXPECT_EQ(column[99999], 99999u * 7);
}

TEST(Column, BeginsWithEqualValues) {
  EXPECT_THAT(values(Column<char>(3, 'x')), ElementsAre('x', 'x', 'x'));
  EXPECT_THAT(values(Column<int>(2)), ElementsAre(0, 0));
  EXPECT_TRUE(Column<int>(0, 1).empty());
}

TEST(Column, GivesParts) {
  Column<int> column;
  for (int i = 0; i < 5; ++i) column.push_back(i);
  EXPECT_THAT(column.part(1, 3), ElementsAre(1, 2));
  column[1] = 9;
  EXPECT_THAT(values(column), ElementsAre(0, 9, 2, 3, 4));
}

TEST(Column, Moves) {
  Column<int> first(2, 5);
  Column<int> second(std::move(first));
  EXPECT_THAT(values(second), ElementsAre(5, 5));
  Column<int> third(1, 1);
  third = std::move(second);
  EXPECT_THAT(values(third), ElementsAre(5, 5));
  third = Column<int>();
  EXPECT_TRUE(third.empty());
}

TEST(Column, MakesRoom) {
  Column<std::uint64_t> column;
  column.reserve(1000);
  EXPECT_EQ(column.bytes(), 8000u);
  EXPECT_TRUE(column.empty());
  column.reserve(10);
  EXPECT_EQ(column.bytes(), 8000u);
}

}  // namespace
}  // namespace Kessel
