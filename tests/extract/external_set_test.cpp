// Parts of a real assembly that another system wrote as thirteen files.
#include <gtest/gtest.h>

#include "kessel/diff.h"
#include "kessel/extract.h"
#include "kessel/join.h"
#include "kessel/split_list.h"
#include "kessel/splitter.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

TEST(ExtractExternalSet, EveryProductSaysWhatTheJoinedSplitSaysOfIt) {
  if (samples_folder().empty()) GTEST_SKIP() << why_no_sample();
  const ScratchFolder folder;
  const std::filesystem::path root =
      samples_folder().parent_path() / "samples-external" / "s1_pe_214.stp";
  Options options;
  options.follow_references = true;
  split(root, "split", options);
  ExtractOptions followed;
  followed.follow_references = true;
  followed.replace = true;
  JoinOptions joined;
  joined.replace = true;
  const std::optional<SplitList> list = read_split_list("split");
  ASSERT_TRUE(list);
  ASSERT_EQ(list->files.size(), 13u);
  for (const ListedFile& file : list->files) {
    extract(root, file.product, "extracted.stp", followed);
    join(std::filesystem::path("split") / file.name, "joined.stp", joined);
    EXPECT_TRUE(diff("extracted.stp", "joined.stp").is_same) << file.product;
  }
}

}  // namespace
}  // namespace Kessel::test
