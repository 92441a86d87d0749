// Axes that a reader would take for the place of a shape.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "output/made_records.h"
#include "placement/placement.h"

namespace Kessel {

/// Keeps components where they are in files of their own. A product that nothing uses is at the top
/// of what it stands in, and there readers move its shape by an AXIS2_PLACEMENT_3D (ISO 10303-42)
/// among the items of its representation, unless an ITEM_DEFINED_TRANSFORMATION (ISO 10303-43) says
/// that it is there for placing something. A component's is said to be so in its assembly's file
/// alone. So its own file says it, too: of each such axis that is not at the origin, by a
/// transformation from it to itself, which nothing refers to. An extraction stays as it is: no file
/// refers to it.
///
/// Where an axis is, only its text and those of its point and directions tell: these are to be
/// shown while the input is read again.
class AxesOffOrigin {
 public:
  AxesOffOrigin(const Instances& instances, const Products& products, const Placement& placement);

  /// The records to be shown, ascending.
  const std::vector<Index>& wanted() const { return wanted_; }
  void show(Index record, std::string_view body);

  /// After all were shown: says what the axes of `file` are for.
  void make(FileId file, const FileNumbers& numbers, MadeRecords& made) const;

 private:
  using Triple = std::array<double, 3>;
  struct Axis {
    Index point = NO_RECORD;
    Index axis = NO_RECORD;       ///< what Z is; NO_RECORD where that is left open, as X may be
    Index direction = NO_RECORD;  ///< what X is
  };

  bool is_at_origin(Index axis) const;
  const Triple* triple_of(Index record) const;

  const Instances& instances_;
  std::vector<std::vector<Index>> axes_;  // by file
  std::vector<Index> wanted_;
  std::unordered_map<Index, Axis> shown_;
  std::unordered_map<Index, Triple> triples_;  // coordinates and ratios
};

}  // namespace Kessel
