// Findings as they are collected.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "kessel/finding.h"

namespace Kessel {

/// Collects findings; of each kind it keeps the first ones and counts the others.
class FindingList {
 public:
  /// How many findings of one kind are kept.
  static constexpr std::uint64_t MOST_OF_A_KIND = 20;

  /// Says which file the findings that follow are about; the input, until it is called. Findings on
  /// one file follow those on the files before it.
  void begin_file(std::string file);

  /// Adds a finding; it counts as many times as it says.
  void add(Finding finding);

  /// All that was kept, in each file by ascending offset, and where some were not, one more that
  /// counts them. Empties the list.
  std::vector<Finding> take();

 private:
  struct Kept {
    std::size_t file;  // how many files were begun
    Finding finding;
  };
  struct OfAKind {
    std::uint64_t count = 0;
    Kept first_beyond;  // The first that was not kept.
  };
  std::size_t files_ = 0;
  std::string file_;
  std::vector<Kept> kept_;
  std::map<FindingKind, OfAKind> kinds_;
};

/// `number` in decimal with a comma between thousands.
std::string with_commas(std::uint64_t number);

/// A file's name in quotes; of what is no UTF-8, and of control characters, "?" is shown.
std::string quoted_name(std::string_view utf8);

/// The beginning of `text` in quotation marks, for a sentence: ASCII only, one line.
std::string quoted(std::string_view text);

}  // namespace Kessel
