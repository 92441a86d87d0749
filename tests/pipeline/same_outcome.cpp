#include "same_outcome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "support/split_run.h"

namespace Kessel::test {
namespace {

/// The line in which two texts begin to differ, out of each: whole files would help nobody.
std::string first_difference(std::string_view actual, std::string_view expected) {
  const auto [in_actual, in_expected] =
      std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
  const auto line_at = [](std::string_view text, std::size_t pos) {
    const std::size_t begin = pos == 0 ? 0 : text.rfind('\n', pos - 1) + 1;
    return std::string(
        text.substr(begin, std::min(text.find('\n', pos) - begin, std::size_t{500})));
  };
  return "  is:        " + line_at(actual, static_cast<std::size_t>(in_actual - actual.begin())) +
         "\n  should be: " +
         line_at(expected, static_cast<std::size_t>(in_expected - expected.begin()));
}

}  // namespace

std::optional<naive::Outcome> expected_outcome(const std::string& input) {
  try {
    return naive::split(input, "out", "<time>");
  } catch (const std::logic_error& error) {
    if (error.what() != std::string_view("endless")) throw;
    return std::nullopt;
  }
}

void expect_outcome(const std::string& input, const naive::Outcome& expected) {
  const SplitRun run = split_text(input);
  EXPECT_EQ(run.result, expected.result);
  EXPECT_EQ(run.messages, expected.messages);
  EXPECT_EQ(run.exception, expected.exception);
  EXPECT_EQ(run.roots_txt, expected.roots_txt);
  for (const auto& [path, text] : run.files) {
    EXPECT_TRUE(expected.files.contains(path)) << path << " should not be there";
  }
  for (const auto& [path, text] : expected.files) {
    const auto file = run.files.find(path);
    if (file == run.files.end()) {
      ADD_FAILURE() << path << " is not there";
    } else if (file->second != text) {
      ADD_FAILURE() << path << " differs:\n" << first_difference(file->second, text);
    }
  }
}

}  // namespace Kessel::test
