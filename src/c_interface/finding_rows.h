// Findings, as rows for C.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "kessel/finding.h"
#include "kessel/kessel.h"

namespace Kessel {

/// Findings, and rows that point to their texts.
class FindingRows {
 public:
  FindingRows() = default;
  explicit FindingRows(std::vector<Finding> findings) : findings_(std::move(findings)) {}

  std::size_t size() const { return findings_.size(); }
  kessel_finding row(std::size_t i) const;

 private:
  std::vector<Finding> findings_;
};

}  // namespace Kessel
