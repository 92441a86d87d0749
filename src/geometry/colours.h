// What colours styles give to the items of representations (ISO 10303-46).
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "geometry/geometry_records.h"

namespace Kessel::Geometry {

inline constexpr std::int32_t NO_RGB = -1;

/// The colours of one style, 0xRRGGBB each, or NO_RGB.
struct StyleColours {
  std::int32_t surface = NO_RGB;
  std::int32_t curve = NO_RGB;

  std::int32_t any() const { return surface != NO_RGB ? surface : curve; }
};

/// The styles of one file.
class StyleTable {
 public:
  explicit StyleTable(const GeometryRecords& records);

  /// What is said of `item` itself; without colours where nothing is.
  StyleColours of(Index item) const;

  /// The colour that a usage gives to all of its component, where a
  /// CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM is for its placement; NO_RGB.
  std::int32_t of_placement(Index context_dependent_representation) const;

 private:
  struct Styled;
  StyleColours colours_of(Index style, bool is_surface, int depth);
  StyleColours read_styles(const std::vector<Index>& styles);

  const GeometryRecords& records_;
  std::unordered_map<Index, StyleColours> items_;
  std::unordered_map<Index, std::int32_t> placements_;
  std::unordered_map<Index, StyleColours> styles_;  // what was read, by assignment
};

}  // namespace Kessel::Geometry
