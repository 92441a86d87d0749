#include "instances/users.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "instances/loaded_text.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Users, AreThoseThatRefer) {
  const LoadedText loaded =
      load("#1=A(#3,#3,#9);\n#2=A(#1,#3);\n#3=A();\n#4=A(#4);\n#2=A(#1,#3);\n");
  const Users users(loaded.instances);
  EXPECT_THAT(users.of(0), ElementsAre(1));
  EXPECT_THAT(users.of(1), IsEmpty());
  EXPECT_THAT(users.of(2), ElementsAre(0, 0, 1));
  EXPECT_THAT(users.of(3), ElementsAre(3));
  EXPECT_THAT(users.of(4), IsEmpty()) << "a repeated record refers to nothing";
}

TEST(Users, OfNoRecords) {
  const LoadedText loaded = load("");
  const Users users(loaded.instances);
  SUCCEED();
}

TEST(Users, AgreeWithAMap) {
  std::string data;
  for (unsigned i = 1; i <= 500; ++i) {
    data += "#" + std::to_string(i) + "=A(#" + std::to_string(1 + i * i % 600) + ",#" +
            std::to_string(1 + i * 31 % 500) + ");";
  }
  const LoadedText loaded = load(data);
  std::map<Index, std::vector<Index>> expected;
  for (Index record = 0; record < 500; ++record) {
    for (const Reference reference : loaded.instances.references(record)) {
      if (reference.record() != NO_RECORD) expected[reference.record()].push_back(record);
    }
  }
  const Users users(loaded.instances);
  for (Index record = 0; record < 500; ++record) {
    const auto found = users.of(record);
    ASSERT_EQ(std::vector<Index>(found.begin(), found.end()), expected[record]);
  }
}

}  // namespace
}  // namespace Kessel::test
