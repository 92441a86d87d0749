// Real assemblies through the splitter and through a plain one.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "same_outcome.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

TEST(NaiveComparison, RealAssembliesComeOutTheSame) {
  const std::filesystem::path folder = samples_folder();
  if (folder.empty()) GTEST_SKIP() << why_no_sample();
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    SCOPED_TRACE(entry.path().filename());
    const std::string input = read_file(entry.path());
    const auto expected = expected_outcome(input);
    ASSERT_TRUE(expected.has_value());
    expect_outcome(input, *expected);
  }
}

}  // namespace
}  // namespace Kessel::test
