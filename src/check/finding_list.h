// Findings as they are collected.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "kessel/finding.h"
#include "reader/record_cutter.h"

namespace Kessel {

/// Collects findings; of each kind it keeps the first ones and counts the others.
class FindingList {
 public:
  /// How many findings of one kind are kept.
  static constexpr std::uint64_t MOST_OF_A_KIND = 20;

  /// Adds a finding of the kind's usual severity.
  void add(FindingKind kind, Place place, std::uint32_t instance, std::string sentence);
  void add(Finding finding);

  /// All that was kept, by ascending offset, and where some were not, one more that counts them.
  /// Empties the list.
  std::vector<Finding> take();

 private:
  struct OfAKind {
    std::uint64_t count = 0;
    Finding first_beyond;  // The first that was not kept.
  };
  std::vector<Finding> kept_;
  std::map<FindingKind, OfAKind> kinds_;
};

/// `number` in decimal with a comma between thousands.
std::string with_commas(std::uint64_t number);

/// The beginning of `text` in quotation marks, for a sentence: ASCII only, one line.
std::string quoted(std::string_view text);

}  // namespace Kessel
