// velkstep split when it is asked to stop, or killed, at any moment.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "shapes.h"
#include "splitter/small_inputs.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

using Arguments = std::vector<std::string>;

const Arguments SPLIT = {"split", "in.stp", "out"};
const Arguments FORCED_SPLIT = {"split", "--force", "in.stp", "out"};

/// What a split of `in` leaves in a new folder.
FolderTree whole_split(const std::string& in) {
  const ProcessRun run = run_velkstep({"split", in, "whole"});
  EXPECT_EQ(run.exit_code, 0) << run.errors;
  FolderTree whole = tree_of("whole");
  fs::remove_all("whole");
  return whole;
}

/// The name of the root's file in a split.
std::string root_of(const FolderTree& whole) {
  const std::string& roots = whole.at("roots.txt");
  return roots.substr(0, roots.size() - 1);
}

/// How many entries of `there` are entries of `whole`.
std::size_t common(const FolderTree& there, const FolderTree& whole) {
  return static_cast<std::size_t>(std::count_if(
      whole.begin(), whole.end(), [&](const auto& entry) { return there.contains(entry.first); }));
}

/// Removes the fresh folder that a killed split has left. Returns whether there was one.
bool remove_fresh_folder() {
  bool found = false;
  for (const std::string& name : names_in(".")) {
    if (!name.starts_with(".out.velkstep-")) continue;
    fs::remove_all(name);
    found = true;
  }
  return found;
}

/// An input whose split lasts some tens of milliseconds.
class Interruption : public testing::Test {
 protected:
  Interruption() {
    std::ofstream out("in.stp", std::ios::binary);
    bench::write_file(out, *bench::find_shape("bodies"), 90, 1);
    out.close();
    const auto begin = std::chrono::steady_clock::now();
    const ProcessRun run = run_velkstep({"split", "in.stp", "timed"});
    lasts_ = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(run.exit_code, 0) << run.errors;
    fs::remove_all("timed");
    whole_ = whole_split("in.stp");
  }

  /// A moment between `from` and `to`, in thousandths of the time that a split lasts.
  std::chrono::steady_clock::duration random_moment(unsigned from, unsigned to) {
    return lasts_ * static_cast<int>(from + random_() % (to - from)) / 1000;
  }

  /// Starts a split into "out" and sends it `signal` after that time.
  static ProcessRun interrupted(int signal, std::chrono::steady_clock::duration after) {
    return run_velkstep(SPLIT, {.signal = signal, .signal_after = after});
  }

  ScratchFolder folder_;
  std::chrono::steady_clock::duration lasts_{};
  FolderTree whole_;
  std::mt19937 random_{1};  // Seeded, so that a run of the test can be repeated.
};

TEST_F(Interruption, SignalsToStopLeaveNothingBehind) {
  int stopped = 0;
  for (int i = 0; i < 12; ++i) {
    const int signal = i % 3 == 0 ? SIGINT : i % 3 == 1 ? SIGTERM : SIGHUP;
    const ProcessRun run = interrupted(signal, lasts_ * i / 12);
    if (run.exit_code == 0) {  // It had finished already.
      EXPECT_THAT(differences(tree_of("out"), whole_), IsEmpty());
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
    const ProcessRun run = interrupted(SIGTERM, lasts_ * i / 6);
    if (run.exit_code == 0) break;
    EXPECT_EQ(names_in("out"), std::set<std::string>{"notes.txt"});
    EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "out"}));
  }
  EXPECT_EQ(read_file("out/notes.txt"), "mine");
}

TEST_F(Interruption, KilledSplitIsCompleteOrNotThereInANewFolder) {
  int killed_at_work = 0;
  for (int i = 0; i < 60; ++i) {
    interrupted(SIGKILL, random_moment(0, 1050));
    if (fs::exists("out")) {
      EXPECT_THAT(differences(tree_of("out"), whole_), IsEmpty()) << i;
      fs::remove_all("out");
    }
    killed_at_work += remove_fresh_folder() ? 1 : 0;
    EXPECT_EQ(names_in("."), std::set<std::string>{"in.stp"});
  }
  EXPECT_GT(killed_at_work, 0);
}

TEST_F(Interruption, KilledSplitIsCompleteWhereTheRootIsInAFolderWithOtherFiles) {
  int killed_at_work = 0;
  for (int i = 0; i < 60; ++i) {
    fs::create_directory("out");
    folder_.write("out/notes.txt", "mine");
    // Half of them near the end, where the files move.
    interrupted(SIGKILL, i % 2 == 0 ? random_moment(0, 1050) : random_moment(800, 1050));
    FolderTree left = tree_of("out");
    EXPECT_EQ(left["notes.txt"], "mine");
    left.erase("notes.txt");
    if (left.contains(root_of(whole_))) {
      EXPECT_THAT(differences(left, whole_), IsEmpty()) << i;
    }
    killed_at_work += remove_fresh_folder() ? 1 : 0;
    fs::remove_all("out");
    EXPECT_EQ(names_in("."), std::set<std::string>{"in.stp"});
  }
  EXPECT_GT(killed_at_work, 0);
}

/// A small split, killed before each of its system calls in turn: whatever it does to files, it has
/// done up to there and not beyond.
class KilledBeforeEachCall : public testing::Test {
 protected:
  void SetUp() override {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer makes thousands of calls of its own, and fails when traced";
#endif
    folder_.write("in.stp", exchange_file(BOX_WITH_LID));
    whole_ = whole_split("in.stp");
    find_first_call();
  }

  /// Calls `prepare`, runs the command up to a system call, and calls `look`; the same up to the
  /// next one, and so on until it lives.
  template <class Prepare, class Look>
  void kill_each_time(const Arguments& arguments, Prepare prepare, Look look) {
    for (unsigned call = first_call_;; ++call) {
      SCOPED_TRACE(call);
      prepare();
      const ProcessRun run = run_velkstep(arguments, killed_before(call));
      if (run.exit_code == 0) break;
      ASSERT_EQ(run.exit_code, -SIGKILL) << run.errors;
      look();
      remove_fresh_folder();
      fs::remove_all("out");
      ASSERT_EQ(names_in("."), std::set<std::string>{"in.stp"});
    }
  }

  ScratchFolder folder_;
  FolderTree whole_;

 private:
  /// The same calls each time: how much memory is asked for depends on where it begins.
  static ProcessSetting killed_before(unsigned call) {
    return {.random_addresses = false, .killed_before_call = call};
  }

  /// Most calls are those of a program that starts, which leave no trace.
  void find_first_call() {
    unsigned low = 1;
    unsigned high = 4096;
    while (low < high) {
      const unsigned middle = (low + high) / 2;
      run_velkstep(SPLIT, killed_before(middle));
      const bool left_a_trace = remove_fresh_folder() || fs::exists("out");
      fs::remove_all("out");
      (left_a_trace ? high : low) = left_a_trace ? middle : middle + 1;
    }
    // Well before it: whether OUTDIR is there makes a difference of some calls.
    first_call_ = low - std::min(low - 1, 30U);
  }

  unsigned first_call_ = 0;
};

TEST_F(KilledBeforeEachCall, NewFolderIsCompleteOrNotThere) {
  int complete = 0;
  const auto look = [&] {
    if (!fs::exists("out")) return;
    EXPECT_THAT(differences(tree_of("out"), whole_), IsEmpty());
    ++complete;
  };
  kill_each_time(
      SPLIT, [] {}, look);
  EXPECT_THAT(differences(tree_of("out"), whole_), IsEmpty());
  EXPECT_GT(complete, 0);
}

TEST_F(KilledBeforeEachCall, EmptyFolderIsCompleteOrEmpty) {
  int complete = 0;
  const auto look = [&] {
    if (fs::is_empty("out")) return;
    EXPECT_THAT(differences(tree_of("out"), whole_), IsEmpty());
    ++complete;
  };
  kill_each_time(
      SPLIT, [] { fs::create_directory("out"); }, look);
  EXPECT_THAT(differences(tree_of("out"), whole_), IsEmpty());
  EXPECT_GT(complete, 0);
}

TEST_F(KilledBeforeEachCall, FolderWithOtherFilesIsCompleteWhereTheRootIs) {
  std::set<std::size_t> arrived;
  const auto prepare = [&] {
    fs::create_directory("out");
    folder_.write("out/notes.txt", "mine");
  };
  FolderTree finished = whole_;
  finished["notes.txt"] = "mine";
  const auto look = [&] {
    const FolderTree left = tree_of("out");
    EXPECT_EQ(left.at("notes.txt"), "mine");
    if (left.contains(root_of(whole_))) {
      EXPECT_THAT(differences(left, finished), IsEmpty());
    }
    arrived.insert(common(left, whole_));
  };
  kill_each_time(SPLIT, prepare, look);
  EXPECT_THAT(differences(tree_of("out"), finished), IsEmpty());
  EXPECT_EQ(arrived, (std::set<std::size_t>{0, 1, 2, 3, 4})) << "between any two moves";
}

TEST_F(KilledBeforeEachCall, ForcedSplitIsOldOrNewWhereTheRootIs) {
  const FolderTree old = {{"box.stp", "old"},
                          {"lid.stp", "old"},
                          {"roots.txt", "old"},
                          {"velkstep-split.json", "old"},
                          {"notes.txt", "mine"}};
  FolderTree finished = whole_;
  finished["notes.txt"] = "mine";
  const auto prepare = [&] {
    fs::create_directory("out");
    for (const auto& [name, text] : old) folder_.write("out/" + name, text);
  };
  std::set<std::size_t> there;
  const auto look = [&] {
    const FolderTree left = tree_of("out");
    EXPECT_EQ(left.at("notes.txt"), "mine");
    if (left.contains(root_of(whole_))) {
      EXPECT_TRUE(left == old || left == finished);
    }
    there.insert(common(left, whole_));
  };
  kill_each_time(FORCED_SPLIT, prepare, look);
  EXPECT_THAT(differences(tree_of("out"), finished), IsEmpty());
  EXPECT_EQ(there, (std::set<std::size_t>{0, 1, 2, 3, 4})) << "between any two moves";
}

// Of the older split, one file goes, one is replaced, and the roots have other names.
TEST_F(KilledBeforeEachCall, ForcedSplitOverAnOlderOneIsOldOrNewWhereItsRootIs) {
  std::string records(BOX_WITH_LID);
  records.replace(records.find("'box','box'"), 11, "'hat','hat'");
  folder_.write("older.stp", exchange_file(records));
  EXPECT_EQ(run_velkstep({"split", "older.stp", "older"}).exit_code, 0);
  const FolderTree older = tree_of("older");
  ASSERT_TRUE(older.contains("hat.stp"));
  const ScratchFolder elsewhere;
  fs::rename(folder_ / "older", "older");
  fs::remove(folder_ / "older.stp");
  fs::current_path(folder_.path());
  const auto prepare = [&] { fs::copy(elsewhere / "older", "out", fs::copy_options::recursive); };
  std::set<bool> roots;
  const auto look = [&] {
    const FolderTree left = tree_of("out");
    EXPECT_FALSE(left.contains("hat.stp") && left.contains("box.stp"));
    if (left.contains("hat.stp")) {
      EXPECT_THAT(differences(left, older), IsEmpty());
    }
    if (left.contains("box.stp")) {
      EXPECT_THAT(differences(left, whole_), IsEmpty());
    }
    roots.insert(left.contains("hat.stp"));
  };
  kill_each_time(FORCED_SPLIT, prepare, look);
  EXPECT_THAT(differences(tree_of("out"), whole_), IsEmpty());
  EXPECT_EQ(roots, (std::set<bool>{false, true}));
}

/// A command that writes one file, killed before each of its system calls in turn.
class OneFileKilledBeforeEachCall : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer makes thousands of calls of its own, and fails when traced";
#endif
    folder_.write("in.stp", exchange_file(BOX_WITH_LID));
  }

  static ProcessRun run(unsigned killed_before) {
    std::vector<std::string> arguments{GetParam(), "--quiet", "--force", "in.stp", "-o", "out.stp"};
    if (arguments.front() == "extract") arguments.insert(arguments.end(), {"--part", "lid"});
    return run_velkstep(arguments,
                        {.random_addresses = false, .killed_before_call = killed_before});
  }

  /// Removes what a killed command left under a name that begins with a dot.
  static bool remove_fresh_files() {
    bool found = false;
    for (const std::string& name : names_in(".")) {
      if (name.starts_with(".velkstep-")) found |= fs::remove(name);
    }
    return found;
  }

  ScratchFolder folder_;
};

TEST_P(OneFileKilledBeforeEachCall, IsOldOrNew) {
  folder_.write("out.stp", "old");
  bool began = false;
  int old_ones = 0;
  // Most calls are those of a program that starts, which leave no trace.
  unsigned low = 1;
  for (unsigned high = 4096; low < high;) {
    const unsigned middle = (low + high) / 2;
    run(middle);
    const bool left_a_trace = remove_fresh_files() || read_file("out.stp") != "old";
    folder_.write("out.stp", "old");
    (left_a_trace ? high : low) = left_a_trace ? middle : middle + 1;
  }
  for (unsigned call = low;; ++call) {
    SCOPED_TRACE(call);
    const ProcessRun killed = run(call);
    if (killed.exit_code == 0) break;
    ASSERT_EQ(killed.exit_code, -SIGKILL) << killed.errors;
    began |= remove_fresh_files();
    EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "out.stp"}));
    const std::string text = read_file("out.stp");
    old_ones += text == "old" ? 1 : 0;
    if (text != "old") {
      EXPECT_TRUE(text.ends_with("END-ISO-10303-21;\n")) << text;
    }
    folder_.write("out.stp", "old");
  }
  EXPECT_TRUE(began);
  EXPECT_GT(old_ones, 0);
  EXPECT_TRUE(read_file("out.stp").ends_with("END-ISO-10303-21;\n"));
  EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "out.stp"}));
}

INSTANTIATE_TEST_SUITE_P(Commands, OneFileKilledBeforeEachCall,
                         testing::Values("join", "shrink", "extract"),
                         [](const auto& test) { return std::string(test.param); });

/// Two inputs that are split into files of the same names at the same time. Every file has its
/// input's header, so each tells whose it is.
class TwoSplits : public testing::Test {
 protected:
  TwoSplits() {
    std::ofstream out("in.stp", std::ios::binary);
    bench::write_file(out, *bench::find_shape("small-parts"), 120, 1);
    out.close();
    const std::string text = read_file("in.stp");
    for (const char* name : {"a.stp", "b.stp", "old.stp"}) {
      std::string own = text;
      const std::string mark = "FILE_DESCRIPTION((";
      own.insert(own.find(mark) + mark.size(), "'" + std::string(name) + "',");
      folder_.write(name, own);
    }
    a_ = whole_split("a.stp");
    b_ = whole_split("b.stp");
    EXPECT_EQ(common(a_, b_), b_.size());
    EXPECT_NE(a_, b_);
  }

  /// Whether the command was refused, which it must have said in one line.
  static bool was_refused(const ProcessRun& run) {
    if (run.exit_code == 0) return false;
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    EXPECT_TRUE(run.errors.starts_with("velkstep: out")) << run.errors;
    return true;
  }

  /// Expects that nothing is left beside the folder, and removes that.
  static void remove_out() {
    fs::remove_all("out");
    for (const std::string& name : names_in(".")) EXPECT_FALSE(name.starts_with(".")) << name;
  }

  ScratchFolder folder_;
  FolderTree a_;
  FolderTree b_;
};

TEST_F(TwoSplits, IntoOneFolderDoNotMix) {
  for (int i = 0; i < 10; ++i) {
    SCOPED_TRACE(i);
    const std::vector<ProcessRun> runs =
        run_side_by_side({{"split", "a.stp", "out"}, {"split", "b.stp", "out"}});
    const bool a_refused = was_refused(runs[0]);
    EXPECT_NE(a_refused, was_refused(runs[1]));
    const std::string& errors = runs[a_refused ? 0 : 1].errors;
    EXPECT_TRUE(errors.find("is there already") != std::string::npos ||
                errors.find("another process is writing into it") != std::string::npos)
        << errors;
    EXPECT_THAT(differences(tree_of("out"), a_refused ? b_ : a_), IsEmpty());
    remove_out();
  }
}

TEST_F(TwoSplits, ForcedIntoOneFolderDoNotMix) {
  ASSERT_EQ(run_velkstep({"split", "old.stp", "before/out"}).exit_code, 0);
  for (int i = 0; i < 12; ++i) {
    SCOPED_TRACE(i);
    fs::copy("before/out", "out", fs::copy_options::recursive);
    const std::vector<ProcessRun> runs = run_side_by_side(
        {{"split", "--force", "a.stp", "out"}, {"split", "--force", "b.stp", "out"}});
    const bool a_refused = was_refused(runs[0]);
    const bool b_refused = was_refused(runs[1]);
    EXPECT_FALSE(a_refused && b_refused) << runs[0].errors << runs[1].errors;
    const FolderTree left = tree_of("out");
    EXPECT_TRUE((!a_refused && left == a_) || (!b_refused && left == b_))
        << runs[0].errors << runs[1].errors;
    remove_out();
  }
}

}  // namespace
}  // namespace Kessel::test
