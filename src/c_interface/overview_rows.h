// All that was read of a file, as rows for C.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "kessel/kessel.h"
#include "kessel/overview.h"

namespace Kessel {

/// An overview, and rows that point into it. Findings stand elsewhere.
class OverviewRows {
 public:
  /// Of nothing.
  OverviewRows() = default;
  explicit OverviewRows(Overview overview);

  bool is_there() const { return is_there_; }
  kessel_summary summary() const;

  std::size_t parts() const { return all_.drawing.assembly.parts.size(); }
  kessel_part part(std::size_t i) const;

  /// How many components or lines a part has; 0 for one that there is not.
  std::size_t components(std::size_t part) const;
  std::size_t lines(std::size_t part) const;
  kessel_component component(std::size_t part, std::size_t i) const;
  kessel_line line(std::size_t part, std::size_t i) const;

 private:
  bool is_there_ = false;
  Overview all_;
  std::vector<std::string> files_;  // by part
  std::vector<Box3> boxes_;         // by part, where it is drawn
};

}  // namespace Kessel
