// What differs between two files, as rows for C.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "kessel/diff.h"
#include "kessel/kessel.h"

namespace Kessel {

/// The records that differ, one after the other, and the texts that the rows point to.
class DifferenceRows {
 public:
  DifferenceRows() = default;
  explicit DifferenceRows(const Difference& difference);

  std::size_t size() const { return rows_.size(); }
  const kessel_difference& row(std::size_t i) const { return rows_[i]; }

 private:
  void add(const kessel_difference& frame, const TypeDifference& type);
  const char* keep(const std::string& text) { return texts_.emplace_back(text).c_str(); }

  std::deque<std::string> texts_;  // stay where they are, also when it is moved
  std::vector<kessel_difference> rows_;
};

}  // namespace Kessel
