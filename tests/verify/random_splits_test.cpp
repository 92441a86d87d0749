// Random files: their splits are found as they should be, and no longer when a word of any file is
// changed.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "check/check_text.h"
#include "kessel/check.h"
#include "kessel/splitter.h"
#include "kessel/verify.h"
#include "pipeline/random_files.h"
#include "support/scratch_folder.h"
#include "support/split_run.h"
#include "verify/known_changes.h"
#include "verify/styles.h"

namespace Kessel::test {
namespace {

namespace fs = std::filesystem;
using enum FindingKind;

/// The styles that a seed's file is split with.
Options options_of(std::uint64_t seed) {
  return {.assemblies = ASSEMBLY_STYLES[seed % 3],
          .names = NAME_STYLES[seed / 3 % 3],
          .folder_in_headers = false};
}

/// Splits "in.stp" into "out"; whether that works and there is something to split.
bool splits(const Options& options) {
  bool done = false;
  printed_by([&] {
    try {
      done = !split_paths("in.stp", "out", options).empty();
    } catch (const std::exception&) {
      done = false;
    }
  });
  if (fs::exists("roots.txt") && done) fs::rename("roots.txt", "out/roots.txt");
  return done;
}

/// Whether the input has something that a run is known to spoil or to repeat in its files.
bool is_spoilt_by_a_run(const std::vector<Finding>& findings) {
  constexpr std::array KINDS = {comment_is_read,     cut_record,          header_is_read_as_data,
                                joined_record,       malformed_reference, record_after_text,
                                record_without_type, repeated_number};
  return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
    return std::find(KINDS.begin(), KINDS.end(), finding.kind) != KINDS.end();
  });
}

TEST(RandomSplits, NothingIsFoundButWhatTheInputBrings) {
  int clean = 0;
  int compared = 0;
  int failed = 0;
  for (std::uint64_t seed = 1; seed <= 900; ++seed) {
    const ScratchFolder folder;
    folder.write("in.stp", random_exchange_file(seed));
    const Options options = options_of(seed);
    if (!splits(options)) {
      EXPECT_FALSE(verify("in.stp", "out", options).findings.empty()) << "seed " << seed;
      ++failed;
      continue;
    }
    const bool spoilt = is_spoilt_by_a_run(check("in.stp"));
    const Verification verification = verify("in.stp", "out", options);
    clean += verification.findings.empty() ? 1 : 0;
    if (spoilt) continue;
    ++compared;
    for (const Finding& finding : verification.findings) {
      EXPECT_TRUE(is_known_change(finding, "out"))
          << "seed " << seed << ": " << finding.file << ": " << describe(finding);
    }
  }
  EXPECT_GE(compared, 500);
  EXPECT_GE(clean, 450);
  EXPECT_GE(failed, 100);
}

/// A word of a file, as far as it takes to damage one: a string, letters and digits, or any other
/// character that is no white space.
struct Word {
  std::size_t begin;
  std::size_t size;
};

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_letter_or_digit(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

std::vector<Word> words_of(const std::string& text) {
  std::vector<Word> words;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at + 1;
    if (text[at] == '\'') {
      end = std::min(text.find('\'', end), text.size() - 1) + 1;
    } else if (is_letter_or_digit(text[at])) {
      while (end < text.size() && is_letter_or_digit(text[end])) ++end;
    }
    if (!is_space(text[at])) words.push_back({at, end - at});
    at = end;
  }
  return words;
}

/// Changes one word of `text` and says how.
std::string damage(std::string& text, std::mt19937_64& random) {
  const std::vector<Word> words = words_of(text);
  const auto [begin, size] = words[random() % words.size()];
  const std::string word = text.substr(begin, size);
  switch (random() % 4) {
    case 0:
      text.erase(begin, size);
      return "without " + word;
    case 1:
      text.insert(begin, word);
      return "twice " + word;
    case 2: {  // Exchanged with another word.
      const auto [other_begin, other_size] = words[random() % words.size()];
      const std::string other = text.substr(other_begin, other_size);
      text.replace(begin, size, other);
      return other + " for " + word;
    }
    default: {
      constexpr std::string_view CHARACTERS = "#'(),;=$*.0123456789AZaz_/!\\\"";
      const std::size_t place = begin + random() % size;
      text[place] = CHARACTERS[random() % CHARACTERS.size()];
      return text.substr(begin, size) + " for " + word;
    }
  }
}

TEST(RandomSplits, OneDamagedWordIsFound) {
  int damaged = 0;
  std::mt19937_64 random(1);
  for (std::uint64_t seed = 1; seed <= 450; ++seed) {
    const ScratchFolder folder;
    const std::string input = random_exchange_file(seed);
    if (input.find("/*") != std::string::npos) continue;  // What is in comments does not matter.
    folder.write("in.stp", input);
    const Options options = options_of(seed);
    if (!splits(options) || !verify("in.stp", "out", options).findings.empty()) continue;

    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator("out")) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (int i = 0; i < 25; ++i) {
      const fs::path& file = files[random() % files.size()];
      const std::string text = read_file(file);
      std::string changed = text;
      const std::string how = damage(changed, random);
      if (changed == text || without_time_stamps(changed) == without_time_stamps(text)) continue;
      std::ofstream(file, std::ios::binary) << changed;
      EXPECT_FALSE(verify("in.stp", "out", options).findings.empty())
          << "seed " << seed << ", " << file << " " << how;
      std::ofstream(file, std::ios::binary) << text;
      ++damaged;
    }
  }
  EXPECT_GE(damaged, 4000);
}

}  // namespace
}  // namespace Kessel::test
