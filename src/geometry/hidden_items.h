// What a file says is not to be seen (ISO 10303-46).
#pragma once

#include <unordered_set>

#include "geometry/geometry_records.h"

namespace Kessel::Geometry {

/// What the INVISIBILITY records of one file speak of: representations, items with their styles,
/// and all that is on a layer. Those that hold in one presentation only do not count.
class HiddenItems {
 public:
  explicit HiddenItems(const GeometryRecords& records);

  /// Whether an item, a representation or what gives it a style is hidden.
  bool has(Index record) const { return !hidden_.empty() && hidden_.contains(record); }
  std::size_t size() const { return hidden_.size(); }

 private:
  void hide(const GeometryRecords& records, Index record);

  std::unordered_set<Index> hidden_;
};

}  // namespace Kessel::Geometry
