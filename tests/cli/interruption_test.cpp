// velkstep split when it is asked to stop, or killed, at any moment.
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "shapes.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

/// An input whose split lasts some tens of milliseconds.
class Interruption : public testing::Test {
 protected:
  Interruption() {
    std::ofstream out("in.stp", std::ios::binary);
    bench::write_file(out, *bench::find_shape("bodies"), 90, 1);
    out.close();
    const auto begin = std::chrono::steady_clock::now();
    const ProcessRun run = run_velkstep({"split", "in.stp", "whole"});
    lasts_ = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(run.exit_code, 0) << run.errors;
    whole_ = names_in("whole");
    fs::remove_all("whole");
  }

  static std::set<std::string> names_in(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
    return names;
  }

  /// Starts a split into "out" and sends it `signal` after the `i`-th of `count` parts of the time
  /// that a split lasts.
  ProcessRun interrupted(int signal, int i, int count) const {
    return run_velkstep({"split", "in.stp", "out"},
                        {.signal = signal, .signal_after = lasts_ * i / count});
  }

  ScratchFolder folder_;
  std::chrono::steady_clock::duration lasts_{};
  std::set<std::string> whole_;
};

TEST_F(Interruption, SignalsToStopLeaveNothingBehind) {
  int stopped = 0;
  for (int i = 0; i < 12; ++i) {
    const int signal = i % 3 == 0 ? SIGINT : i % 3 == 1 ? SIGTERM : SIGHUP;
    const ProcessRun run = interrupted(signal, i, 12);
    if (run.exit_code == 0) {  // It had finished already.
      EXPECT_EQ(names_in("out"), whole_);
      fs::remove_all("out");
    } else {
      EXPECT_EQ(run.exit_code, -signal);
      EXPECT_EQ(run.out, "");
      ++stopped;
    }
    EXPECT_EQ(names_in("."), std::set<std::string>{"in.stp"});
  }
  EXPECT_GT(stopped, 0);
}

TEST_F(Interruption, SignalsToStopLeaveOtherFilesAsTheyAre) {
  fs::create_directory("out");
  folder_.write("out/notes.txt", "mine");
  for (int i = 0; i < 6; ++i) {
    const ProcessRun run = interrupted(SIGTERM, i, 6);
    if (run.exit_code == 0) break;
    EXPECT_EQ(names_in("out"), std::set<std::string>{"notes.txt"});
    EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "out"}));
  }
  EXPECT_EQ(read_file("out/notes.txt"), "mine");
}

TEST_F(Interruption, KilledSplitIsCompleteOrNotThereInANewFolder) {
  int killed = 0;
  for (int i = 0; i < 60; ++i) {
    const ProcessRun run = interrupted(SIGKILL, i, 55);
    killed += run.exit_code == -SIGKILL ? 1 : 0;
    if (fs::exists("out")) {
      EXPECT_EQ(names_in("out"), whole_) << i;
    }
    for (const std::string& name : names_in(".")) {
      if (name == "in.stp") continue;
      EXPECT_TRUE(name == "out" || name.starts_with(".out.velkstep-")) << name;
      fs::remove_all(name);
    }
  }
  EXPECT_GT(killed, 0);
}

TEST_F(Interruption, KilledSplitIsCompleteWhereTheRootIsInAFolderWithOtherFiles) {
  for (int i = 0; i < 20; ++i) {
    fs::create_directory("out");
    folder_.write("out/notes.txt", "mine");
    interrupted(SIGKILL, i + 5, 20);
    std::set<std::string> names = names_in("out");
    EXPECT_EQ(names.erase("notes.txt"), 1u);
    const std::string root_name = fs::exists("out/roots.txt") ? read_file("out/roots.txt") : "\n";
    if (names.contains(root_name.substr(0, root_name.size() - 1))) {
      EXPECT_EQ(names, whole_) << i;
    }
    for (const std::string& name : names_in(".")) {
      if (name != "in.stp") fs::remove_all(name);
    }
  }
}

TEST_F(Interruption, TwoSplitsIntoOneFolderDoNotMix) {
  for (int i = 0; i < 5; ++i) {
    const std::vector<ProcessRun> runs =
        run_side_by_side({{"split", "in.stp", "out"}, {"split", "in.stp", "out"}});
    int done = 0;
    for (const ProcessRun& run : runs) {
      done += run.exit_code == 0 ? 1 : 0;
      if (run.exit_code == 0) continue;
      EXPECT_EQ(run.exit_code, 1);
      EXPECT_NE(run.errors.find("is there already"), std::string::npos) << run.errors;
    }
    EXPECT_EQ(done, 1);
    EXPECT_EQ(names_in("out"), whole_);
    fs::remove_all("out");
    EXPECT_EQ(names_in("."), std::set<std::string>{"in.stp"});
  }
}

}  // namespace
}  // namespace Kessel::test
