// File names of one folder, kept apart.
#include "naming/unique_names.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "naming/file_stem.h"

namespace Kessel::test {
namespace {

TEST(UniqueNames, FirstOfAKindKeepsItsName) {
  UniqueNames names;
  EXPECT_EQ(names.take("bolt"), "bolt.stp");
  EXPECT_EQ(names.take("nut"), "nut.stp");
}

TEST(UniqueNames, RepeatsAreNumberedInOrder) {
  UniqueNames names;
  names.take("bolt");
  EXPECT_EQ(names.take("bolt"), "bolt (2).stp");
  EXPECT_EQ(names.take("bolt"), "bolt (3).stp");
}

TEST(UniqueNames, CaseDoesNotCount) {
  UniqueNames names;
  names.take("Cover");
  EXPECT_EQ(names.take("COVER"), "COVER (2).stp");
  EXPECT_EQ(names.take("cover"), "cover (3).stp");
}

TEST(UniqueNames, CaseOfOtherScriptsDoesNotCountEither) {
  UniqueNames names;
  names.take("Кронштейн");
  EXPECT_EQ(names.take("КРОНШТЕЙН"), "КРОНШТЕЙН (2).stp");
  names.take("Straße");
  EXPECT_EQ(names.take("STRASSE"), "STRASSE (2).stp");
}

TEST(UniqueNames, NormalFormDoesNotCount) {
  UniqueNames names;
  names.take("f\u00fcr");
  EXPECT_EQ(names.take("fu\u0308r"), "fu\u0308r (2).stp");
}

TEST(UniqueNames, NumbersThatAreNamesAlreadyArePassedOver) {
  UniqueNames names;
  names.take("bolt (2)");
  names.take("bolt");
  EXPECT_EQ(names.take("bolt"), "bolt (3).stp");
  EXPECT_EQ(names.take("Bolt (2)"), "Bolt (2) (2).stp");
}

TEST(UniqueNames, NumberedNamesAreTakenForLaterNames) {
  UniqueNames names;
  names.take("bolt");
  names.take("bolt");
  EXPECT_EQ(names.take("bolt (2)"), "bolt (2) (2).stp");
}

TEST(UniqueNames, LongNamesMakeRoomForTheirNumber) {
  UniqueNames names;
  const std::string stem(MAX_FILE_NAME - 4, 'x');
  EXPECT_EQ(names.take(stem), stem + ".stp");
  std::set<std::string> given;
  for (int i = 2; i <= 120; ++i) {
    const std::string name = names.take(stem);
    EXPECT_EQ(name.size(), MAX_FILE_NAME);
    EXPECT_TRUE(name.ends_with("x (" + std::to_string(i) + ").stp")) << name;
    EXPECT_TRUE(given.insert(name).second) << name;
  }
}

TEST(UniqueNames, StemsThatAreEqualAfterTheCutStayApart) {
  UniqueNames names;
  const std::string stem(MAX_FILE_NAME - 4, 'x');
  names.take(stem);
  names.take(stem);                                         // cut and " (2)"
  const std::string cut = stem.substr(4);                   // what was left of it
  names.take(cut);                                          // as short, and free
  EXPECT_EQ(names.take(cut), stem.substr(4) + " (3).stp");  // " (2)" is the long one's
}

}  // namespace
}  // namespace Kessel::test
