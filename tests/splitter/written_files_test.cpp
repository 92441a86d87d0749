// The list of files that a run returns.
#include "splitter/written_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "model/store.h"

namespace Kessel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WrittenFiles : public testing::Test {
 protected:
  Part* add_part(const char* path) {
    owned_.push_back(std::make_unique<Part>("PRODUCT_DEFINITION"));
    owned_.back()->path = path;
    file_.add_part(owned_.back().get());
    return owned_.back().get();
  }

  Store file_{"no such file"};
  std::vector<std::unique_ptr<Part>> owned_;
};

TEST_F(WrittenFiles, BareNameIsJoinedToTheOutputFolder) {
  add_part("#1_part.stp");
  EXPECT_THAT(written_files(file_.parts, file_.root, "a/./b/../out"),
              ElementsAre("a/out/#1_part.stp"));
}

TEST_F(WrittenFiles, PathWithAFolderIsNormalisedAndNotJoined) {
  add_part("a/./b/../#1_part.stp");
  add_part("/abs//x/../#2_part.stp");
  add_part("./#3_part.stp");
  EXPECT_THAT(written_files(file_.parts, file_.root, "out"),
              ElementsAre("a/#1_part.stp", "/abs/#2_part.stp", "#3_part.stp"));
}

TEST_F(WrittenFiles, RootComesFirstWhereverItStands) {
  add_part("1");
  add_part("2");
  file_.root = add_part("3");
  add_part("4");
  EXPECT_THAT(written_files(file_.parts, file_.root, "out"),
              ElementsAre("out/3", "out/1", "out/2", "out/4"));
}

TEST_F(WrittenFiles, NullInTheListOfPartsContributesNothing) {
  add_part("1");
  file_.parts.push_back(nullptr);
  add_part("2");
  EXPECT_THAT(written_files(file_.parts, file_.root, "out"), ElementsAre("out/1", "out/2"));
  file_.parts = {nullptr};
  EXPECT_THAT(written_files(file_.parts, file_.root, "out"), IsEmpty());
}

}  // namespace
}  // namespace Kessel::test
