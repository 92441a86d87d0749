// velkstep split on disks and with limits that do not let it finish: one line says why, and
// everything is as it was.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/small_disk.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;
using testing::MatchesRegex;

/// A box with a lid whose file has some forty kilobytes.
std::string box_with_large_lid() {
  std::string records(BOX_WITH_LID);
  std::string items;
  for (int i = 100; i < 1100; ++i) {
    const std::string name = "#" + std::to_string(i);
    records += name + "=CARTESIAN_POINT('',(0.,0.,0.));\n";
    items += "," + name;
  }
  records.insert(records.find("#11),#12)") + 3, items);
  return exchange_file(records);
}

/// A box with that many lids.
std::string box_with_lids(unsigned count) {
  std::string records =
      "#1=PRODUCT('box','box','',());\n"
      "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
      "#3=PRODUCT_DEFINITION('d','',#2,$);\n";
  for (unsigned i = 1; i <= count; ++i) {
    const auto name = [i](unsigned k) { return "#" + std::to_string(10 * i + k); };
    records += name(0) + "=PRODUCT('lid','lid','',());\n" + name(1) +
               "=PRODUCT_DEFINITION_FORMATION('',''," + name(0) + ");\n" + name(2) +
               "=PRODUCT_DEFINITION('d',''," + name(1) + ",$);\n" + name(3) +
               "=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3," + name(2) + ",$);\n";
  }
  return exchange_file(records);
}

/// What is in OUTDIR before the split.
enum class Before { nothing, other_files };

class Faults : public testing::TestWithParam<Before> {
 protected:
  Faults() { folder_.write("in.stp", box_with_large_lid()); }

  /// Makes `outdir` what it is to be before the split; with files, of which one is in the way.
  void prepare(const std::string& outdir) const {
    if (GetParam() == Before::nothing) return;
    fs::create_directories(outdir + "/sub");
    folder_.write(outdir + "/notes.txt", "mine");
    folder_.write(outdir + "/lid.stp", "old");
  }

  static std::vector<std::string> split_into(const std::string& outdir) {
    std::vector<std::string> arguments = {"split", "in.stp", outdir};
    if (GetParam() == Before::other_files) arguments.emplace_back("--force");
    return arguments;
  }

  /// Splits into `outdir` and expects the whole split there, or the exit code 1, one line that
  /// matches, and the whole scratch folder as it was. Returns whether it was split.
  bool split_or_nothing(const std::string& outdir, const ProcessSetting& setting,
                        const std::string& line) {
    const FolderTree before = tree_of(folder_.path());
    const ProcessRun run = run_velkstep(split_into(outdir), setting);
    if (run.exit_code == 0) {
      EXPECT_EQ(run.errors, "");
      EXPECT_THAT(differences(tree_of(outdir), whole_split()), IsEmpty());
      return true;
    }
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.errors, MatchesRegex(line));
    EXPECT_THAT(differences(tree_of(folder_.path()), before), IsEmpty());
    return false;
  }

  /// What OUTDIR holds after a split without a fault.
  FolderTree whole_split() const {
    if (whole_.empty()) {
      prepare("elsewhere/out");
      EXPECT_EQ(run_velkstep(split_into("elsewhere/out")).exit_code, 0);
      whole_ = tree_of("elsewhere/out");
      fs::remove_all("elsewhere");
    }
    return whole_;
  }

  ScratchFolder folder_;

 private:
  mutable FolderTree whole_;
};

INSTANTIATE_TEST_SUITE_P(Outdir, Faults, testing::Values(Before::nothing, Before::other_files),
                         [](const auto& each) {
                           return each.param == Before::nothing ? "New" : "WithOtherFiles";
                         });

/// The line about `outdir`, or a file in it, that names the system's reason.
std::string line_about(const std::string& outdir, const std::string& reason) {
  return "velkstep: " + outdir + "(/[^/]*)?: (cannot be [a-z ]+: )?" + reason + "; [^\n]+\n";
}

TEST_P(Faults, DiskOfTooFewPages) {
  int failures = 0;
  for (int pages = 1;; ++pages) {
    SCOPED_TRACE(pages);
    ASSERT_LT(pages, 100) << "there is no end to it";
    const SmallDisk disk("disk", "size=" + std::to_string(4 * pages) + "k");
    if (!disk.is_there()) GTEST_SKIP() << "no right to mount a small disk";
    prepare("disk/out");
    if (GetParam() == Before::other_files && read_file("disk/out/lid.stp") != "old") continue;
    if (split_or_nothing("disk/out", {}, line_about("disk/out", "No space left on device"))) break;
    ++failures;
  }
  EXPECT_GE(failures, 10);
}

TEST_P(Faults, DiskOfTooFewFiles) {
  int failures = 0;
  for (int files = 2;; ++files) {  // The disk's own folder is one.
    SCOPED_TRACE(files);
    ASSERT_LT(files, 100) << "there is no end to it";
    const SmallDisk disk("disk", "size=1m,nr_inodes=" + std::to_string(files));
    if (!disk.is_there()) GTEST_SKIP() << "no right to mount a small disk";
    try {
      prepare("disk/out");
      if (!fs::exists("disk/out/lid.stp") && GetParam() == Before::other_files) continue;
    } catch (const fs::filesystem_error&) {
      continue;  // Not even room for what is to be there before.
    }
    if (split_or_nothing("disk/out", {}, line_about("disk/out", "No space left on device"))) break;
    ++failures;
  }
  EXPECT_GE(failures, 3);
}

TEST_P(Faults, DiskThatIsReadOnly) {
  const SmallDisk disk("disk", "size=1m");
  if (!disk.is_there()) GTEST_SKIP() << "no right to mount a small disk";
  prepare("disk/out");
  ASSERT_EQ(::mount("none", "disk", "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr), 0);
  EXPECT_FALSE(split_or_nothing("disk/out", {}, line_about("disk/out", "Read-only file system")));
}

TEST_P(Faults, LimitOfTheSizeOfFiles) {
  // More than the line about it, which goes into a file, too.
  for (const std::uint64_t limit : {300U, 1000U, 4096U, 20'000U, 30'000U}) {
    SCOPED_TRACE(limit);
    fs::remove_all("out");
    prepare("out");
    EXPECT_FALSE(split_or_nothing("out", {.most_file_bytes = limit},
                                  "velkstep: out/(box|lid).stp: cannot be written: "
                                  "File too large; raise the limit of sizes .*\n"));
  }
}

TEST_P(Faults, LimitOfOpenFiles) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizer looks at memory through descriptors of its own";
#endif
  folder_.write("in.stp", box_with_lids(200));
  int failures = 0;
  for (std::uint64_t limit = 5; limit <= 64; ++limit) {
    SCOPED_TRACE(limit);
    fs::remove_all("out");
    prepare("out");
    const bool done = split_or_nothing(
        "out", {.most_files = limit}, "velkstep: (in.stp|out(/[^/]*)?): .*Too many open files.*\n");
    failures += done ? 0 : 1;
    EXPECT_TRUE(done || limit < 64);
  }
  EXPECT_GE(failures, 1);
}

TEST_P(Faults, FolderWithoutPermission) {
  // A new folder cannot be made in it, other files cannot be moved into it.
  const fs::path read_only = GetParam() == Before::nothing ? "above" : "above/out";
  fs::create_directory("above");
  prepare("above/out");
  fs::permissions(read_only, fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_FALSE(split_or_nothing("above/out", {.minds_permissions = true},
                                line_about("above/out", "Permission denied")));
  fs::permissions(read_only, fs::perms::owner_all);
}

TEST_P(Faults, FolderAboveWithoutPermission) {
  fs::create_directory("above");
  prepare("above/out");
  fs::permissions("above", fs::perms::owner_read | fs::perms::owner_exec);
  // Where the folder itself can be written to, that is enough.
  EXPECT_EQ(split_or_nothing("above/out", {.minds_permissions = true},
                             line_about("above/out", "Permission denied")),
            GetParam() == Before::other_files);
  fs::permissions("above", fs::perms::owner_all);
}

}  // namespace
}  // namespace Kessel::test
