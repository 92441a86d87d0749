// The checked form on random files: in the classic reading beside what a plain splitter makes of
// them, in the standard's beside what the check says.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "kessel/check.h"
#include "kessel/errors.h"
#include "kessel/part.h"
#include "kessel/splitter.h"
#include "random_files.h"
#include "same_outcome.h"
#include "support/effort.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t SEEDS = 600;

/// What the checked form makes of one file.
struct CheckedRun {
  std::optional<Finding> refusal;
  std::string unwritten;  ///< the file that could not be written
  std::string exception;  ///< any other
  std::string messages;
  std::vector<std::string> result;
  std::map<std::string, std::string> files;
};

/// Runs on the "in.stp" of the working directory.
CheckedRun run_checked(Reading reading) {
  CheckedRun run;
  Options options = Options::classic();
  options.reading = reading;
  run.messages = printed_by([&] {
    try {
      for (const fs::path& path : split_paths("in.stp", "out", options)) {
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

bool is_error(const Finding& finding) {
  return finding.severity == Severity::error;
}

TEST(CheckedComparison, ClassicReadingRefusesWhatWouldNotReturnAndElseWritesTheSame) {
  std::map<std::string, int> tally;
  for (std::uint64_t seed = 1; seed <= tries(SEEDS); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::string input = random_exchange_file(seed);
    const std::optional<naive::Outcome> expected = expected_outcome(input);
    const ScratchFolder folder;
    folder.write("in.stp", input);
    const CheckedRun run = run_checked(Reading::classic);
    if (run.refusal) {
      EXPECT_FALSE(expected.has_value()) << "would return";
      EXPECT_TRUE(run.files.empty());
      EXPECT_EQ(run.messages, "");
      ++tally["refused"];
      continue;
    }
    ASSERT_TRUE(expected.has_value()) << "would not return, but was not refused";
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
      ++tally["exception"];
      continue;
    }
    EXPECT_EQ(expected->exception, "");
    std::map<std::string, std::string> files = expected->files;
    if (expected->roots_txt) files["roots.txt"] = *expected->roots_txt;
    EXPECT_TRUE(run.files == files);
    ++tally["written"];
    if (HasFailure()) break;
  }
  if (tries(SEEDS) < SEEDS) return;
  EXPECT_GE(tally["refused"], 10);
  EXPECT_GE(tally["not written"], 10);
  EXPECT_GE(tally["exception"], 30);
  EXPECT_GE(tally["written"], 400);
  Part::free_statics();
}

TEST(CheckedComparison, StandardReadingRefusesWhatTheCheckCallsAnError) {
  std::map<std::string, int> tally;
  for (std::uint64_t seed = 1; seed <= tries(SEEDS); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const ScratchFolder folder;
    folder.write("in.stp", random_exchange_file(seed));
    const std::vector<Finding> findings = check("in.stp");
    const auto error = std::find_if(findings.begin(), findings.end(), is_error);
    const CheckedRun run = run_checked(Reading::standard);
    if (!run.refusal) {
      EXPECT_TRUE(error == findings.end()) << error->sentence;
      ++tally["accepted"];
      continue;
    }
    EXPECT_TRUE(run.files.empty());
    EXPECT_EQ(run.messages, "");
    // Legal, but more than the records of this style can have.
    if (run.refusal->kind == FindingKind::record_number_too_large) {
      ++tally["large number"];
      continue;
    }
    ASSERT_TRUE(error != findings.end()) << run.refusal->sentence;
    EXPECT_EQ(name_of(run.refusal->kind), name_of(error->kind));
    EXPECT_EQ(run.refusal->line, error->line);
    ++tally["refused"];
  }
  if (tries(SEEDS) < SEEDS) return;
  EXPECT_GE(tally["refused"], 10);
  EXPECT_GE(tally["large number"], 5);
  EXPECT_GE(tally["accepted"], 400);
}

}  // namespace
}  // namespace Kessel::test
