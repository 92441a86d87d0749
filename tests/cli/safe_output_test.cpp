// velkstep split and what is in OUTDIR already: nothing is lost, whatever happens.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "kessel/split_list.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"
#include "support/shell.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::Pair;

const std::string LIST_OF_BOX = "out/box.stp\nout/lid.stp\n";

class SafeOutput : public testing::Test {
 protected:
  SafeOutput() { folder_.write("in.stp", exchange_file(BOX_WITH_LID)); }

  static ProcessRun split(std::vector<std::string> options = {}) {
    options.insert(options.begin(), "split");
    options.insert(options.end(), {"in.stp", "-o", "out"});
    return run_velkstep(options);
  }

  /// Expects that the split fails with this line and leaves the whole scratch folder as it was.
  void expect_untouched(const std::string& line, const std::vector<std::string>& options = {}) {
    const auto before = tree_of(folder_.path());
    const ProcessRun run = split(options);
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errors, line);
    EXPECT_EQ(tree_of(folder_.path()), before);
  }

  /// What is in "out" after a split into nothing.
  const FolderTree& expected_files() const { return files_; }

  ScratchFolder folder_;

 private:
  /// Split before any test begins.
  static FolderTree split_box() {
    const ScratchFolder folder;
    folder.write("in.stp", exchange_file(BOX_WITH_LID));
    EXPECT_EQ(split().out, LIST_OF_BOX);
    const FolderTree files = tree_of("out");
    EXPECT_EQ(names_in("out"),
              (std::set<std::string>{"box.stp", "lid.stp", "roots.txt", SPLIT_LIST}));
    return files;
  }
  const FolderTree files_ = split_box();
};

TEST_F(SafeOutput, NewFolderHoldsTheSplitAndNothingElse) {
  EXPECT_EQ(split().out, LIST_OF_BOX);
  EXPECT_EQ(tree_of("out"), expected_files());
  auto all = tree_of(folder_.path());
  EXPECT_EQ(all.size(), 6u) << "in.stp, out and four files in it";
}

TEST_F(SafeOutput, NewFolderHasTheModeOfNewFolders) {
  split();
  fs::create_directory("other");
  EXPECT_EQ(fs::status("out").permissions(), fs::status("other").permissions());
}

TEST_F(SafeOutput, NewFolderKeepsTheGroupThatItsParentHandsDown) {
  fs::create_directory("parent");
  ASSERT_EQ(::chmod("parent", 02775), 0);
  const mode_t mask = ::umask(022);
  EXPECT_EQ(run_velkstep({"split", "in.stp", "parent/out"}).exit_code, 0);
  ::umask(mask);
  struct stat status = {};
  ASSERT_EQ(::stat("parent/out", &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 02755u);
}

TEST_F(SafeOutput, FoldersAboveAreMadeToo) {
  const ProcessRun run = run_velkstep({"split", "in.stp", "a/b/out/"});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "a/b/out/box.stp\na/b/out/lid.stp\n");
  EXPECT_EQ(tree_of("a/b/out"), expected_files());
  EXPECT_THAT(tree_of("a").size(), 6u);
}

TEST_F(SafeOutput, FoldersAboveGoAgainWhenTheSplitFails) {
  folder_.write("in.stp", "hello");
  EXPECT_EQ(run_velkstep({"split", "in.stp", "a/b/out"}).exit_code, 1);
  EXPECT_FALSE(fs::exists("a"));
}

TEST_F(SafeOutput, NothingToSplitLeavesNothing) {
  folder_.write("in.stp", exchange_file(LID_ALONE));
  const auto before = tree_of(folder_.path());
  EXPECT_EQ(split({"--classic"}).exit_code, 3);
  EXPECT_EQ(tree_of(folder_.path()), before);
}

TEST_F(SafeOutput, EmptyFolderKeepsItsMode) {
  fs::create_directory("out");
  fs::permissions("out", fs::perms::owner_all | fs::perms::group_read);
  EXPECT_EQ(split().exit_code, 0);
  EXPECT_EQ(tree_of("out"), expected_files());
  EXPECT_EQ(fs::status("out").permissions(), fs::perms::owner_all | fs::perms::group_read);
}

TEST_F(SafeOutput, FolderThatTheCommandWasStartedInStaysTheSameFolder) {
  fs::create_directory("out");
  struct stat before = {};
  ASSERT_EQ(::stat("out", &before), 0);
  fs::current_path("out");
  const ProcessRun run = run_velkstep({"split", "../in.stp", "."});
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(run.out, "box.stp\nlid.stp\n");
  EXPECT_EQ(tree_of("."), expected_files());
  fs::current_path("..");
  struct stat after = {};
  ASSERT_EQ(::stat("out", &after), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(SafeOutput, OtherFilesInTheFolderStay) {
  fs::create_directories("out/sub");
  folder_.write("out/notes.txt", "mine");
  EXPECT_EQ(split().out, LIST_OF_BOX);
  auto expected = expected_files();
  expected["sub"] = "/";
  expected["notes.txt"] = "mine";
  EXPECT_EQ(tree_of("out"), expected);
  EXPECT_EQ(tree_of(folder_.path()).size(), 8u);
}

TEST_F(SafeOutput, FilesOfTheSameNamesAreRefused) {
  for (const char* name : {"box.stp", "lid.stp", "roots.txt", SPLIT_LIST}) {
    fs::create_directories("out");
    const fs::path path = folder_.write("out/" + std::string(name), "mine");
    expect_untouched("velkstep: out/" + std::string(name) +
                     ": is there already; --force replaces it\n");
    fs::remove(path);
  }
}

TEST_F(SafeOutput, ForceReplacesExactlyThose) {
  fs::create_directories("out");
  folder_.write("out/box.stp", "old");
  folder_.write("out/roots.txt", "old");
  folder_.write("out/hat.stp", "mine");
  EXPECT_EQ(split({"--force"}).out, LIST_OF_BOX);
  auto expected = expected_files();
  expected["hat.stp"] = "mine";
  EXPECT_EQ(tree_of("out"), expected);
  EXPECT_EQ(tree_of(folder_.path()).size(), 7u);
}

TEST_F(SafeOutput, ForceWithNothingToReplaceIsLikeWithout) {
  EXPECT_EQ(split({"--force"}).out, LIST_OF_BOX);
  EXPECT_EQ(tree_of("out"), expected_files());
}

TEST_F(SafeOutput, LinksAreReplacedNotFollowed) {
  fs::create_directories("out");
  folder_.write("precious", "mine");
  fs::create_symlink("../precious", "out/lid.stp");
  fs::create_symlink("nowhere", "out/box.stp");
  expect_untouched("velkstep: out/lid.stp: is there already; --force replaces it\n");
  EXPECT_EQ(split({"--force"}).exit_code, 0);
  EXPECT_EQ(tree_of("out"), expected_files());
  EXPECT_EQ(read_file("precious"), "mine");
  EXPECT_FALSE(fs::exists("out/nowhere"));
}

TEST_F(SafeOutput, FoldersAreNeverReplaced) {
  fs::create_directories("out/lid.stp");
  folder_.write("out/lid.stp/notes.txt", "mine");
  folder_.write("out/box.stp", "mine");
  expect_untouched("velkstep: out/lid.stp: is a folder; remove it, or name another place\n",
                   {"--force"});
}

TEST_F(SafeOutput, PipesAndDevicesAreNeverReplaced) {
  fs::create_directory("out");
  ASSERT_EQ(::mkfifo("out/lid.stp", 0600), 0);
  const ProcessRun whole = split({"--force"});
  EXPECT_EQ(whole.exit_code, 1);
  EXPECT_EQ(whole.errors, "velkstep: out/lid.stp: is no file; remove it, or name another place\n");
  EXPECT_TRUE(fs::is_fifo("out/lid.stp"));
  ASSERT_EQ(::mkfifo("out/pipe", 0600), 0);
  const std::vector<std::vector<std::string>> commands = {
      {"extract", "--part=lid"}, {"picture"}, {"join"}, {"shrink"}};
  for (std::vector<std::string> command : commands) {
    command.insert(command.end(), {"in.stp", "-f", "-o", "out/pipe"});
    const ProcessRun run = run_velkstep(command);
    EXPECT_EQ(run.exit_code, 1) << command.front();
    EXPECT_EQ(run.errors,
              "velkstep: out/pipe: cannot be written: Operation not supported; only files are "
              "replaced, so name another\n");
    EXPECT_TRUE(fs::is_fifo("out/pipe")) << command.front();
  }
  EXPECT_EQ(std::distance(fs::directory_iterator("out"), {}), 2);
}

TEST_F(SafeOutput, FolderBehindALinkIsWrittenTo) {
  fs::create_directories("real");
  fs::create_directory_symlink("real", "out");
  EXPECT_EQ(split().out, LIST_OF_BOX);
  EXPECT_EQ(tree_of("real"), expected_files());
  EXPECT_TRUE(fs::is_symlink("out"));
}

TEST_F(SafeOutput, FileInPlaceOfTheFolderStays) {
  folder_.write("out", "mine");
  expect_untouched("velkstep: out: cannot be created: Not a directory; name another place\n");
  EXPECT_EQ(run_velkstep({"split", "in.stp", "out/sub/folder"}).errors,
            "velkstep: out/sub/folder: cannot be created: Not a directory; name another place\n");
  EXPECT_EQ(read_file("out"), "mine");
}

TEST_F(SafeOutput, InputMayStandInTheFolder) {
  fs::create_directory("out");
  fs::rename("in.stp", "out/in.stp");
  EXPECT_EQ(run_velkstep({"split", "out/in.stp", "out"}).out, LIST_OF_BOX);
  EXPECT_EQ(read_file("out/in.stp"), exchange_file(BOX_WITH_LID));
}

TEST_F(SafeOutput, InputIsNotReplacedWithoutForce) {
  fs::create_directory("out");
  fs::rename("in.stp", "out/lid.stp");
  EXPECT_EQ(run_velkstep({"split", "out/lid.stp", "out"}).exit_code, 1);
  EXPECT_EQ(read_file("out/lid.stp"), exchange_file(BOX_WITH_LID));
}

TEST_F(SafeOutput, InputIsNotReplacedWithForceEither) {
  fs::create_directory("out");
  fs::rename("in.stp", "out/lid.stp");
  fs::create_symlink("lid.stp", "out/box.stp");
  const auto before = tree_of("out");
  const ProcessRun run = run_velkstep({"split", "--force", "out/lid.stp", "out"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors, "velkstep: out/lid.stp: is the input; choose another folder\n");
  EXPECT_EQ(tree_of("out"), before);
}

TEST_F(SafeOutput, ListThatCannotBePrintedLeavesEverythingAsItWas) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const ProcessSetting full = {.standard_output = "/dev/full"};
  const auto expect_untouched_by = [&](const std::vector<std::string>& arguments) {
    const auto before = tree_of(folder_.path());
    const ProcessRun run = run_velkstep(arguments, full);
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(run.errors,
              "velkstep: standard output: cannot be written: No space left on device; make "
              "room, or name a place on another disk\n");
    EXPECT_EQ(tree_of(folder_.path()), before);
  };
  for (const char* command : {"split", "report"}) {
    expect_untouched_by({command, "in.stp", "new/out"});
    fs::create_directory("out");
    expect_untouched_by({command, "in.stp", "out"});
    folder_.write("out/notes.txt", "mine");
    expect_untouched_by({command, "in.stp", "out"});
    folder_.write("out/lid.stp", "mine");
    fs::create_symlink("notes.txt", "out/roots.txt");
    expect_untouched_by({command, "--force", "in.stp", "out"});
    fs::remove_all("out");
  }
}

TEST_F(SafeOutput, FolderInWhichAnotherProcessPublishesIsRefused) {
  fs::create_directory("out");
  const int folder = ::open("out", O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(::flock(folder, LOCK_EX), 0);
  expect_untouched(
      "velkstep: out: another process is writing into it; wait, or name another "
      "folder\n");
  folder_.write("out/lid.stp", "mine");
  expect_untouched(
      "velkstep: out: another process is writing into it; wait, or name another "
      "folder\n",
      {"--force"});
  ::close(folder);
  EXPECT_EQ(split({"--force"}).exit_code, 0);
  EXPECT_EQ(tree_of("out"), expected_files());
}

TEST_F(SafeOutput, PathsInTheListLeadToTheFiles) {
  fs::create_directories("deep/er");
  fs::create_symlink("deep/er", "link");
  const ProcessRun run = run_velkstep({"split", "in.stp", "link/../out"});
  EXPECT_EQ(run.out, "link/../out/box.stp\nlink/../out/lid.stp\n");
  EXPECT_EQ(tree_of("deep/out"), expected_files());
  EXPECT_EQ(run_velkstep({"split", "in.stp", ".//out/./"}).out, LIST_OF_BOX);
}

TEST_F(SafeOutput, WorkingDirectoryNeedNotHaveAPath) {
  EXPECT_EQ(
      run_in_shell(
          "in=$PWD/in.stp; out=$PWD/out; mkdir gone; cd gone; rmdir ../gone; '" VELKSTEP_COMMAND
          "' split \"$in\" \"$out\" >../list 2>&1; echo $?")
          .out,
      "0\n");
  EXPECT_EQ(tree_of("out"), expected_files());
}

TEST_F(SafeOutput, PathsMayHoldAnyCharacter) {
  std::string odd = "-a b\t\n'\"\\$*?;&|<>#%\x7F\u00fc\u652f";
  EXPECT_EQ(run_velkstep({"split", "in.stp", "./" + odd}).exit_code, 0);
  EXPECT_EQ(tree_of(odd), expected_files());
}

TEST_F(SafeOutput, LongestNameOfAFolderIsFine) {
  const std::string longest(255, 'x');
  EXPECT_EQ(run_velkstep({"split", "in.stp", longest}).exit_code, 0);
  EXPECT_EQ(tree_of(longest), expected_files());
  const auto before = tree_of(folder_.path());
  const ProcessRun run = run_velkstep({"split", "in.stp", longest + "x"});
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(run.errors, "velkstep: " + longest +
                            "x: cannot be created: File name too long; name a "
                            "shorter one\n");
  EXPECT_EQ(tree_of(folder_.path()), before);
}

TEST_F(SafeOutput, HeadersHoldNoPathOfTheMachine) {
  const fs::path outdir = folder_ / "out";
  EXPECT_EQ(run_velkstep({"split", folder_ / "in.stp", outdir}).exit_code, 0);
  for (const auto& [name, text] : tree_of("out")) {
    EXPECT_EQ(text.find(folder_.path().string()), std::string::npos) << name;
  }
}

TEST_F(SafeOutput, HeadersHoldTheFilesOwnNames) {
  const std::vector<std::string> NAMES = {"box.stp", "lid.stp"};
  for (const std::string& outdir : {(folder_ / "a").string(), std::string("b/")}) {
    EXPECT_EQ(run_velkstep({"split", "in.stp", outdir}).exit_code, 0);
    for (const std::string& name : NAMES) {
      const std::string text = read_file(fs::path(outdir) / name);
      EXPECT_NE(text.find("\nFILE_NAME('" + name + "','"), std::string::npos) << outdir << text;
    }
  }
}

}  // namespace
}  // namespace Kessel::test
