// The splitter against a plain one that does every step the slow, obvious way.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "naive/naive_splitter.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// Expects that the splitter leaves exactly what the plain one leaves.
void expect_same_outcome(const std::string& input) {
  const naive::Outcome expected = naive::split(input, "out", "<time>");
  const SplitRun run = split_text(input);
  EXPECT_EQ(run.result, expected.result);
  EXPECT_EQ(run.messages, expected.messages);
  EXPECT_EQ(run.exception, expected.exception);
  EXPECT_EQ(run.roots_txt, expected.roots_txt);
  ASSERT_EQ(run.files.size(), expected.files.size());
  for (const auto& [path, text] : expected.files) {
    ASSERT_TRUE(run.files.contains(path)) << path;
    // Not EXPECT_EQ: a message with two megabytes helps nobody.
    EXPECT_TRUE(run.files.at(path) == text) << path << " differs";
  }
}

TEST(NaiveComparison, RealAssembliesComeOutTheSame) {
  const std::filesystem::path folder = samples_folder();
  if (folder.empty()) GTEST_SKIP() << "no folder with samples";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    SCOPED_TRACE(entry.path().filename());
    expect_same_outcome(read_file(entry.path()));
  }
}

}  // namespace
}  // namespace Kessel::test
