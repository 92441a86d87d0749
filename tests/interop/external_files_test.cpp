// Other systems' sets of files: joined and split, a CAD kernel sees in them what it sees by
// following the references itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "interop/assemblies.h"
#include "interop/kernel_reader.h"
#include "kessel/diff.h"
#include "kessel/join.h"
#include "kessel/splitter.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// A set of files: one that comes as such, or a sample that the kernel writes as several.
class ExternalFiles : public testing::TestWithParam<std::string> {
 protected:
  static constexpr const char* SET = "s1_pe_214.stp";

  /// The root of the set, in the folder "set"; empty where there is no such sample.
  fs::path root_of_set() const {
    const fs::path from = GetParam() == SET
                              ? samples_folder().parent_path() / "samples-external" / SET
                              : file_of({GetParam()}, folder_);
    if (samples_folder().empty() || from.empty()) return {};
    const fs::path root = folder_ / "set" / "root.stp";
    if (GetParam() == SET) {
      fs::copy(from.parent_path(), root.parent_path());
      return root.parent_path() / SET;
    }
    fs::create_directory(root.parent_path());
    write_several_files(from, root);
    return root;
  }

  ScratchFolder folder_;
};

TEST_P(ExternalFiles, JoinToWhatIsSeenByFollowingReferences) {
  const fs::path root = root_of_set();
  if (root.empty()) GTEST_SKIP() << why_no_sample();
  const std::vector<DocumentShape> expected = read_free_shapes(root);
  ASSERT_EQ(expected.size(), 1u);
  EXPECT_GT(join(root, folder_ / "one.stp").inputs.size(), 3u);
  EXPECT_EQ(differences(expected, read_free_shapes(folder_ / "one.stp")), "");
  if (GetParam() == SET) {
    EXPECT_EQ(count_solids(expected), 11);
  }
}

TEST_P(ExternalFiles, SplitKeepsWhatTheyLeadTo) {
  const fs::path root = root_of_set();
  if (root.empty()) GTEST_SKIP() << why_no_sample();
  const std::vector<DocumentShape> expected = read_free_shapes(root);
  join(root, folder_ / "one.stp");
  for (const AssemblyStyle style : {AssemblyStyle::lean, AssemblyStyle::nested}) {
    SCOPED_TRACE(static_cast<int>(style));
    const fs::path out = folder_ / (style == AssemblyStyle::lean ? "lean" : "nested");
    const auto files = split(root, out, {.assemblies = style, .names = NameStyle::product});
    ASSERT_GT(files.size(), 2u);
    // By its absolute path, from which the kernel sees names that climb out of a folder.
    EXPECT_EQ(differences(expected, read_free_shapes(files.front().path)), "");
    const JoinOptions options{.follow_outside = true, .replace = true};
    join(files.front().path, folder_ / "again.stp", options);
    EXPECT_TRUE(diff(folder_ / "one.stp", folder_ / "again.stp").is_same);
  }
}

INSTANTIATE_TEST_SUITE_P(Sets, ExternalFiles,
                         testing::Values("s1_pe_214.stp", "as1-oc-214.stp", "dm1-id-214.stp",
                                         "as1-tu-203.stp"),
                         [](const auto& test) {
                           std::string name = test.param;
                           std::replace_if(
                               name.begin(), name.end(),
                               [](char c) { return c == '-' || c == '.'; }, '_');
                           return name;
                         });

}  // namespace
}  // namespace Kessel::test
