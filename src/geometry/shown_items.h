// What representations show, down to the items that have lines.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "geometry/bad_geometry.h"
#include "geometry/colours.h"
#include "geometry/geometry_records.h"
#include "instances/column.h"

namespace Kessel::Geometry {

/// Whose colour an item has; the later, the more it counts.
enum class ColourOf : std::uint8_t { nothing, edge, representation, holder, face, curve };

struct Colour {
  std::int32_t rgb = NO_RGB;
  ColourOf of = ColourOf::nothing;
};

/// An item that is drawn, or holds others that are.
struct ShownItem {
  Index record = NO_RECORD;
  std::uint32_t root = 0;  ///< which of the representations leads to it first
  Role role = Role::none;
  Colour colour;
};

/// What to begin with, a representation or a repositioned item, and the colour that it has from
/// outside.
struct ShownRoot {
  Index record = NO_RECORD;
  Colour colour = {};
};

/// Finds items from representations down, each once.
class ItemFinder {
 public:
  ItemFinder(const GeometryRecords& records, const StyleTable& styles, Budget& budget);

  /// What `roots` show: the items that hold others stand in front of them. An item takes the colour
  /// of the face that it is found by, else of what holds that. Throws BadGeometry where the budget
  /// does not suffice. The list is valid until the next call.
  std::span<const ShownItem> find(std::span<const ShownRoot> roots);

  /// Whether the last find() came to `record`.
  bool has(Index record) const;

 private:
  void add(Index record, std::uint32_t root, const Colour& inherited);
  void enter(const ShownItem& item);
  Colour colour_of(Index record, Role role, const Colour& inherited) const;

  const GeometryRecords& records_;
  const StyleTable& styles_;
  Budget& budget_;
  std::vector<ShownItem> found_;
  Column<std::uint32_t> places_;  // by record: where it stands in the list, if it does
};

}  // namespace Kessel::Geometry
