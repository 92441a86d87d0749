// Generated and real assemblies, shrunk: what they say, and that a second time changes nothing.
//
// VELKSTEP_RANDOM_SEEDS=100000 tries that many files instead of the usual number, and
// VELKSTEP_FIRST_SEED=42 begins with another one. TMPDIR=/dev/shm spares the disk.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assemblies/random_assembly.h"
#include "interop/assemblies.h"
#include "kessel/diff.h"
#include "kessel/join.h"
#include "kessel/shrink.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "shrink/plain_check.h"
#include "support/scratch_folder.h"
#include "support/seeds.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// What is wrong with a shrunk file, renumbered or not.
std::vector<std::string> faults(const fs::path& in, bool is_taken_apart) {
  std::vector<std::string> faults;
  ShrinkOptions options;
  options.replace = true;
  const Shrunk shrunk = shrink(in, "out.stp", options);
  if (is_taken_apart) {
    faults = faults_of_shrunk(take_apart(read_file(in)), take_apart(read_file("out.stp")));
  }
  if (!diff(in, "out.stp").is_same) faults.emplace_back("says something else");
  const Shrunk again = shrink("out.stp", "again.stp", options);
  if (again.records_before != shrunk.records_after) faults.emplace_back("miscounted");
  if (read_file("out.stp") != read_file("again.stp")) {
    faults.emplace_back("shrunk again, is another file");
  }
  options.renumber = true;
  const Shrunk numbered = shrink(in, "numbered.stp", options);
  if (numbered.records_after != shrunk.records_after) faults.emplace_back("renumbered, has others");
  if (!diff("out.stp", "numbered.stp").is_same) {
    faults.emplace_back("renumbered, says something else");
  }
  return faults;
}

/// What is wrong with a split and a join that shrink what they write.
std::vector<std::string> faults_of_split_and_join(const fs::path& in, AssemblyStyle style) {
  Options options;
  options.assemblies = style;
  options.shrink = true;
  fs::remove_all("split");
  fs::remove("roots.txt");
  const std::vector<WrittenFile> files = split(in, "split", options);
  JoinOptions join_options;
  join_options.replace = true;
  join_options.allow_missing = true;  // What the input refers to need not be there.
  join_options.follow_outside = true;
  std::vector<std::string> faults;
  if (!files.empty()) {
    fs::rename("roots.txt", "split/roots.txt");
    const Joined joined = join(files.front().path, "joined.stp", join_options);
    for (const Finding& warning : joined.warnings) {
      if (warning.kind != FindingKind::missing_target) faults.push_back(warning.sentence);
    }
    for (const Finding& finding : verify(in, "split").findings) faults.push_back(finding.sentence);
    ShrinkOptions shrink_options;
    shrink_options.replace = true;
    const Shrunk small = shrink("joined.stp", "small.stp", shrink_options);
    if (small.records_after != small.records_before) faults.emplace_back("was not shrunk whole");
    if (!diff(in, "joined.stp").is_same) faults.emplace_back("split and joined, is another");
  }
  join_options.shrink = true;
  join(in, "alone.stp", join_options);
  if (!diff(in, "alone.stp").is_same) faults.emplace_back("joined, is another");
  return faults;
}

TEST(RandomAssemblies, AreTheSameWhenSplitAndJoinedAndShrunk) {
  const auto [first, count] = seeds_to_try(30);
  const ScratchFolder folder;
  for (std::uint64_t seed = first; seed < first + count; ++seed) {
    folder.write("in.stp", random_assembly(seed));
    const AssemblyStyle style = seed % 2 == 0 ? AssemblyStyle::lean : AssemblyStyle::nested;
    EXPECT_THAT(faults_of_split_and_join("in.stp", style), testing::IsEmpty()) << "seed " << seed;
  }
}

TEST(RandomAssemblies, AreTheSameWhenShrunk) {
  const auto [first, count] = seeds_to_try(60);
  const ScratchFolder folder;
  for (std::uint64_t seed = first; seed < first + count; ++seed) {
    const bool has_sections = seed % 2 == 0;
    folder.write("in.stp", random_assembly(seed, {.sections = has_sections}));
    EXPECT_THAT(faults("in.stp", !has_sections), testing::IsEmpty()) << "seed " << seed;
  }
}

class WholeAssembly : public testing::TestWithParam<AssemblySource> {
 protected:
  void expect_no_faults() const {
    const ScratchFolder folder;
    const fs::path path = file_of(GetParam(), folder);
    if (path.empty()) GTEST_SKIP() << why_no_sample();
    EXPECT_THAT(faults(path, true), testing::IsEmpty());
  }
};

TEST_P(WholeAssembly, IsTheSameWhenShrunk) {
  expect_no_faults();
}

INSTANTIATE_TEST_SUITE_P(EveryAssembly, WholeAssembly, testing::ValuesIn(every_assembly()),
                         [](const auto& test) { return test_name(test.param); });
INSTANTIATE_TEST_SUITE_P(
    SomeAssemblies, WholeAssembly,
    testing::Values(AssemblySource{"desk-lamp.step"}, AssemblySource{"dm1-id-214.stp"},
                    AssemblySource{"led.step"}, AssemblySource{"mapped-ap242.stp"},
                    AssemblySource{"bodies", 12}, AssemblySource{"shared-levels", 3}),
    [](const auto& test) { return test_name(test.param); });

TEST(WholeAssemblies, ShrinkByThatMuch) {
  const ScratchFolder folder;
  const fs::path path = file_of({"as1-oc-214.stp"}, folder);
  if (path.empty()) GTEST_SKIP() << why_no_sample();
  const Shrunk shrunk = shrink(path, "out.stp");
  EXPECT_EQ(shrunk.records_before, 6425u);
  EXPECT_EQ(shrunk.records_after, 5180u);
}

}  // namespace
}  // namespace Kessel::test
