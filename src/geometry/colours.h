// What colours styles give to the items of representations (ISO 10303-46).
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "geometry/geometry_records.h"
#include "geometry/hidden_items.h"

namespace Kessel::Geometry {

inline constexpr std::int32_t NO_RGB = -1;

/// The colours of one style, 0xRRGGBB each, or NO_RGB.
struct StyleColours {
  std::int32_t surface = NO_RGB;
  std::int32_t curve = NO_RGB;

  std::int32_t any() const { return surface != NO_RGB ? surface : curve; }
};

/// What is said of a component, where it stands below others.
struct ContextStyle {
  /// The placements on the way to it (CONTEXT_DEPENDENT_SHAPE_REPRESENTATION), as the file has
  /// them.
  std::vector<Index> placements;
  std::int32_t colour = NO_RGB;
  bool is_hidden = false;
};

/// The styles of one file.
class StyleTable {
 public:
  explicit StyleTable(const GeometryRecords& records);

  /// What is said of `item` itself; without colours where nothing is.
  StyleColours of(Index item) const;

  /// What CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM records say, in the order of the file: all of a
  /// component has that colour, or is hidden.
  const std::vector<ContextStyle>& in_contexts() const { return contexts_; }

  /// Bytes that all this takes, about.
  std::uint64_t bytes() const;

  /// Whether an item or a representation is not to be seen.
  bool hides(Index item) const { return hidden_.has(item); }

 private:
  void add_context(Index record, std::int32_t colour);
  StyleColours colours_of(Index style, bool is_surface, int depth);
  StyleColours read_styles(const std::vector<Index>& styles);

  const GeometryRecords& records_;
  const HiddenItems hidden_;
  std::unordered_map<Index, StyleColours> items_;
  std::vector<ContextStyle> contexts_;
  std::unordered_map<Index, StyleColours> styles_;  // what was read, by assignment
};

}  // namespace Kessel::Geometry
