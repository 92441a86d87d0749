// The checked form and the check on random files, against what a plain splitter makes of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/check.h"
#include "kessel/errors.h"
#include "kessel/part.h"
#include "kessel/splitter.h"
#include "random_files.h"
#include "same_outcome.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using enum FindingKind;

constexpr std::uint64_t SEEDS = 600;

/// What the checked form makes of one file, and what the check says about it.
struct CheckedRun {
  std::optional<Finding> refusal;
  std::string unwritten;  ///< the file that could not be written
  std::string exception;  ///< any other
  std::string messages;
  std::vector<std::string> result;
  std::map<std::string, std::string> files;
  std::vector<Finding> findings;

  bool found(FindingKind kind) const {
    return std::any_of(findings.begin(), findings.end(),
                       [kind](const Finding& finding) { return finding.kind == kind; });
  }
};

CheckedRun run_checked(const std::string& input) {
  const ScratchFolder folder;
  folder.write("in.stp", input);
  CheckedRun run;
  run.findings = check("in.stp");
  run.messages = printed_by([&] {
    try {
      for (const fs::path& path : split_paths("in.stp", "out", Options())) {
        run.result.push_back(path.string());
      }
    } catch (const InputError& error) {
      run.refusal = error.finding();
    } catch (const OutputError& error) {
      run.unwritten = error.path().string();
    } catch (const std::exception& error) {
      run.exception = error.what();
    }
  });
  for (const auto& entry : fs::recursive_directory_iterator(".")) {
    const std::string name = entry.path().lexically_relative(".").string();
    if (!entry.is_regular_file() || name == "in.stp") continue;
    run.files[name] = without_time_stamps(read_file(entry.path()));
  }
  return run;
}

/// Whether the data's findings agree with the messages that a run prints.
void expect_same_news(const CheckedRun& run, const naive::Outcome& expected) {
  const auto printed = [&](std::string_view sentence) {
    return expected.messages.find(sentence) != std::string::npos;
  };
  // Behind a reference beyond the store a run may end before it says anything.
  if (!expected.exception.empty()) return;
  EXPECT_EQ(run.found(one_part), printed("Only one part was found"));
  EXPECT_EQ(run.found(no_part) || run.found(no_root), printed("No root part found."));
  if (printed("Got a malformed")) {
    EXPECT_TRUE(run.found(unused_usage) || run.found(no_part));
  }
  if (printed("Could not open")) {
    EXPECT_TRUE(run.found(part_without_name));
  }
}

TEST(CheckedComparison, ChecksAgreeWithWhatRunsDo) {
  std::map<std::string, int> tally;
  for (std::uint64_t seed = 1; seed <= SEEDS; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::string input = random_exchange_file(seed);
    const std::optional<naive::Outcome> expected = expected_outcome(input);
    const CheckedRun run = run_checked(input);
    if (run.refusal) {
      EXPECT_FALSE(expected.has_value()) << "would return";
      EXPECT_TRUE(run.files.empty());
      EXPECT_EQ(run.messages, "");
      EXPECT_TRUE(run.found(run.refusal->kind)) << name_of(run.refusal->kind);
      ++tally["refused"];
      continue;
    }
    ASSERT_TRUE(expected.has_value()) << "would not return, but was not refused";
    expect_same_news(run, *expected);
    if (!run.unwritten.empty()) {
      EXPECT_NE(expected->messages.find("Could not open " + run.unwritten + "\n"),
                std::string::npos);
      ++tally["not written"];
      continue;
    }
    EXPECT_EQ(run.messages, expected->messages);
    EXPECT_EQ(run.result, expected->result);
    if (!run.exception.empty()) {
      EXPECT_TRUE(expected->exception.ends_with(": " + run.exception)) << run.exception;
      if (run.exception == "invalid vector subscript") {
        EXPECT_TRUE(run.found(instance_beyond_store) || run.found(header_is_read_as_data));
      }
      ++tally["exception"];
      continue;
    }
    EXPECT_EQ(expected->exception, "");
    std::map<std::string, std::string> files = expected->files;
    if (expected->roots_txt) files["roots.txt"] = *expected->roots_txt;
    EXPECT_TRUE(run.files == files);
    ++tally["written"];
    if (run.findings.empty()) ++tally["clean"];
    if (HasFailure()) break;
  }
  EXPECT_GE(tally["refused"], 10);
  EXPECT_GE(tally["not written"], 10);
  EXPECT_GE(tally["exception"], 30);
  EXPECT_GE(tally["written"], 400);
  EXPECT_GE(tally["clean"], 50);
  Part::free_statics();
}

}  // namespace
}  // namespace Kessel::test
