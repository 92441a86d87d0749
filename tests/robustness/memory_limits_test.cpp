// Less memory than a command wants: it fails with one line, and leaves what was there.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "cli/run_process.h"
#include "splitter/small_inputs.h"
#include "support/effort.h"
#include "support/folder_tree.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t MEGABYTE = 1 << 20;
/// Less for a smaller input.
const std::uint64_t STEP = length_to_try(MEGABYTE);

const std::string NO_MEMORY = ": not enough memory; close other programs, or give -j 1\n";

/// An input for which a command asks for memory in many places: many records, and long ones.
std::string demanding_input() {
  std::string records(BOX_WITH_LID);
  const std::uint64_t end = 1000 + length_to_try(200'000);
  for (std::uint64_t number = 1000; number < end; ++number) {
    records += "#" + std::to_string(number) + "=CARTESIAN_POINT('',(0.,0.,0.));\n";
  }
  records += "#300000=LONG(#1000";
  for (std::uint64_t i = length_to_try(1'000'000); i > 0; --i) records += ",#1001";
  return exchange_file(records + ");\n");
}

/// The least memory, to a megabyte, with which the program can say its version.
std::uint64_t least_memory() {
  for (std::uint64_t memory = MEGABYTE;; memory += MEGABYTE) {
    if (run_velkstep({"--version"}, {.most_memory = memory}).exit_code == 0) return memory;
  }
}

class MemoryLimits : public testing::Test {
 protected:
  MemoryLimits() { folder_.write("in.stp", demanding_input()); }

  /// Runs a command with ever more memory until it succeeds; until then it must fail with one line.
  /// Calls `look` after each failure.
  template <class Look>
  static void expect_clean_failures(const std::vector<std::string>& arguments, Look look) {
    const std::uint64_t least = least_memory();
    int failures = 0;
    for (std::uint64_t memory = least;; memory += STEP) {
      ASSERT_LT(memory, least + 300 * MEGABYTE) << "there is no end to it";
      const ProcessRun run = run_velkstep(arguments, {.most_memory = memory});
      if (run.exit_code == 0) break;
      ++failures;
      ASSERT_EQ(run.exit_code, 1) << memory << ": " << run.errors;
      ASSERT_EQ(run.out, "");
      ASSERT_THAT(run.errors,
                  testing::AnyOf("velkstep: in.stp" + NO_MEMORY, "velkstep" + NO_MEMORY));
      look();
    }
    EXPECT_GE(failures, 5) << "the input asks for too little";
  }

  ScratchFolder folder_;
};

TEST_F(MemoryLimits, SplitLeavesNothing) {
  const std::vector<std::vector<std::string>> commands = {
      {"split", "in.stp", "out"},
      {"split", "--json", "in.stp", "a/b/out"},
      {"report", "in.stp", "report/out"},
  };
  for (const std::vector<std::string>& command : commands) {
    SCOPED_TRACE(command.back());
    for (const auto& entry : fs::directory_iterator(".")) {
      if (entry.path() != "./in.stp") fs::remove_all(entry);
    }
    expect_clean_failures(command, [] {
      for (const auto& entry : fs::directory_iterator(".")) EXPECT_EQ(entry.path(), "./in.stp");
    });
    EXPECT_TRUE(fs::exists(fs::path(command.back()) / "box.stp"));
  }
}

TEST_F(MemoryLimits, ForcedSplitLeavesWhatWasThere) {
  ASSERT_EQ(run_velkstep({"split", "in.stp", "out"}).exit_code, 0);
  folder_.write("out/box.stp", "precious");
  expect_clean_failures({"split", "--force", "in.stp", "out"},
                        [] { EXPECT_EQ(read_file("out/box.stp"), "precious"); });
  EXPECT_NE(read_file("out/box.stp"), "precious");
}

TEST_F(MemoryLimits, OneFileIsReplacedWholeOrNotAtAll) {
  for (const char* const command : {"join", "shrink"}) {
    SCOPED_TRACE(command);
    folder_.write("one.stp", "precious");
    expect_clean_failures({command, "--quiet", "--force", "in.stp", "-o", "one.stp"}, [] {
      EXPECT_EQ(read_file("one.stp"), "precious");
      EXPECT_EQ(names_in("."), (std::set<std::string>{"in.stp", "one.stp"}));
    });
    EXPECT_NE(read_file("one.stp"), "precious");
  }
}

TEST_F(MemoryLimits, OtherCommandsSayIt) {
  ASSERT_EQ(run_velkstep({"split", "in.stp", "out"}).exit_code, 0);
  for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
           {"check", "in.stp"},
           {"tree", "in.stp"},
           {"info", "in.stp"},
           {"verify", "in.stp", "out"},
       }) {
    SCOPED_TRACE(command.front());
    expect_clean_failures(command, [] {});
    std::vector<std::string> with_json = command;
    with_json.emplace_back("--json");
    expect_clean_failures(with_json, [] {});
  }
}

}  // namespace
}  // namespace Kessel::test
