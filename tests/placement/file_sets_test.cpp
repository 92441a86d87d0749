#include "placement/file_sets.h"

#include <gtest/gtest.h>

namespace Kessel::test {
namespace {

std::vector<FileId> files(const FileSets& sets, Index record) {
  std::vector<FileId> result;
  for (const Stand stand : sets.of(record)) result.push_back(stand.file());
  return result;
}

TEST(FileSets, ARecordStandsNowhereFirst) {
  const FileSets sets(2);
  EXPECT_FALSE(sets.is_placed(1));
  EXPECT_TRUE(sets.of(1).empty());
  EXPECT_EQ(sets.find(1, 0), nullptr);
}

TEST(FileSets, OneFileAndSeveralInAnyOrder) {
  FileSets sets(2);
  EXPECT_TRUE(sets.add(0, 7, Role::own));
  EXPECT_FALSE(sets.add(0, 7, Role::guest));
  EXPECT_EQ(files(sets, 0), (std::vector<FileId>{7}));
  EXPECT_TRUE(sets.add(0, 3, Role::guest));
  EXPECT_TRUE(sets.add(0, 5, Role::stand_in));
  EXPECT_FALSE(sets.add(0, 5, Role::own));
  EXPECT_EQ(files(sets, 0), (std::vector<FileId>{3, 5, 7}));
  EXPECT_EQ(sets.find(0, 3)->role(), Role::guest);
  EXPECT_EQ(sets.find(0, 5)->role(), Role::stand_in);
  EXPECT_EQ(sets.find(0, 7)->role(), Role::own);
  EXPECT_FALSE(sets.has(0, 4));
  EXPECT_FALSE(sets.is_placed(1));
}

TEST(FileSets, RolesChange) {
  FileSets sets(1);
  sets.add(0, 1, Role::stand_in);
  sets.set_role(0, 1, Role::own);
  sets.set_role(0, 2, Role::own);
  EXPECT_EQ(files(sets, 0), (std::vector<FileId>{1}));
  EXPECT_EQ(sets.of(0).front().role(), Role::own);
}

}  // namespace
}  // namespace Kessel::test
