// Random files through the splitter and through a plain one.
//
// VELKSTEP_RANDOM_SEEDS=100000 tries that many files instead of the usual number, and
// VELKSTEP_FIRST_SEED=42 begins with another one. TMPDIR=/dev/shm spares the disk.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "random_files.h"
#include "same_outcome.h"
#include "support/effort.h"

namespace Kessel::test {
namespace {

constexpr std::uint64_t USUAL_SEEDS = 600;

constexpr std::string_view SENTENCES[] = {
    "Only one part was found in the file !",
    "No root part found.",
    "Got a malformed NEXT_ASSEMBLY_USAGE_OCCURRENCE",
    "Got a malformed ASSEMBLY_COMPONENT_USAGE",
    "Got a malformed QUANTIFIED_ASSEMBLY_COMPONENT_USAGE",
    "Got an out of range in 'get_child' while fetching child nb 0",
    "Got an out of range in 'get_child' while fetching child nb 1",
    "Got an out of range in 'propagate_from_child' while fetching child nb 0",
    "Could not open out/",
};

/// How many of the inputs led to this and that.
class Tally {
 public:
  void count_endless() { ++counts_["no return"]; }

  void count(const naive::Outcome& outcome) {
    count_if("compared", true);
    count_if("no message and no exception", outcome.messages.empty() && outcome.exception.empty());
    for (const std::string_view sentence : SENTENCES) {
      count_if(sentence, holds(outcome.messages, sentence));
    }
    count_if("exception before writing", !outcome.exception.empty() && outcome.files.empty());
    if (!outcome.files.empty()) count_if("while writing: " + outcome.exception, true);
    count_if("generated root", outcome.roots_txt == "Root.stp\n");
    count_if("chosen root", outcome.roots_txt && outcome.roots_txt != "Root.stp\n");
    count_if("three files or more", outcome.result.size() >= 3);
    count_if("more files than may be open", outcome.result.size() > 50);

    std::string all;
    for (const auto& [path, text] : outcome.files) all += path + "\n" + text;
    count_if("second part of a product", holds(all, "_part_(2)_.stp\n"));
    count_if("reference block", holds(all, "=DOCUMENT_FILE('#"));
    count_if("shared context", holds(all, ",'external'"));
    count_if("emptied list", holds(all, "()"));
    count_if("header with another name", holds(all, "FILE_NAME('out/"));
    count_if("header without a time", !all.empty() && !holds(all, "<time>"));
    count_if("presentation", holds(all, "MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION"));
    count_if("mapped item", holds(all, "=MAPPED_ITEM("));
    count_if("leading zeros", holds(all, "#00"));
  }

  std::uint64_t operator[](std::string_view what) const {
    const auto found = counts_.find(what);
    return found == counts_.end() ? 0 : found->second;
  }

 private:
  static bool holds(std::string_view text, std::string_view sought) {
    return text.find(sought) != std::string_view::npos;
  }
  void count_if(std::string_view what, bool counts) {
    if (counts) ++counts_[std::string(what)];
  }

  std::map<std::string, std::uint64_t, std::less<>> counts_;
};

// The comparison is worth what the files are: fewer of a kind than this, and a change to the
// generator has made it dull.
constexpr struct {
  std::string_view what;
  std::uint64_t least;
} EXPECTED_VARIETY[] = {
    {"compared", 570},
    {"no return", 3},
    {"no message and no exception", 280},
    {"three files or more", 330},
    {"chosen root", 110},
    {"generated root", 270},
    {"more files than may be open", 1},
    {"second part of a product", 150},
    {"reference block", 370},
    {"shared context", 240},
    {"presentation", 260},
    {"mapped item", 70},
    {"emptied list", 390},
    {"leading zeros", 15},
    {"header with another name", 390},
    {"header without a time", 2},
    {"Only one part was found in the file !", 20},
    {"No root part found.", 15},
    {"Got a malformed NEXT_ASSEMBLY_USAGE_OCCURRENCE", 18},
    {"Got a malformed ASSEMBLY_COMPONENT_USAGE", 12},
    {"Got a malformed QUANTIFIED_ASSEMBLY_COMPONENT_USAGE", 15},
    {"Got an out of range in 'get_child' while fetching child nb 0", 25},
    {"Got an out of range in 'get_child' while fetching child nb 1", 20},
    {"Got an out of range in 'propagate_from_child' while fetching child nb 0", 12},
    {"Could not open out/", 12},
    {"exception before writing", 9},
    {"while writing: out_of_range: invalid vector subscript", 3},
    {"while writing: out_of_range: invalid map<K, T> key", 25},
};

TEST(RandomComparison, RandomFilesComeOutTheSame) {
  const std::uint64_t first = number_from_environment("VELKSTEP_FIRST_SEED", 1);
  const std::uint64_t seeds = number_from_environment("VELKSTEP_RANDOM_SEEDS", tries(USUAL_SEEDS));
  Tally tally;
  for (std::uint64_t seed = first; seed < first + seeds; ++seed) {
    const std::string input = random_exchange_file(seed);
    const auto expected = expected_outcome(input);
    if (!expected) {
      tally.count_endless();
      continue;
    }
    tally.count(*expected);
    expect_outcome(input, *expected);
    ASSERT_FALSE(HasFailure()) << "seed " << seed << ":\n" << input;
  }
  if (seeds < USUAL_SEEDS) return;
  for (const auto& [what, least] : EXPECTED_VARIETY) EXPECT_GE(tally[what], least) << what;
}

TEST(RandomComparison, TheSeedAloneMakesTheFile) {
  EXPECT_EQ(random_exchange_file(7), random_exchange_file(7));
  EXPECT_NE(random_exchange_file(7), random_exchange_file(8));
}

}  // namespace
}  // namespace Kessel::test
