// What the types of records mean for drawing.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "instances/type_table.h"

namespace Kessel::Geometry {

enum class Role : std::uint8_t {
  none,         ///< nothing that leads to lines
  holder,       ///< a solid, shell, set or the like: what it refers to is drawn
  face,         ///< the same, and its colour counts more
  edge,         ///< a curve between two vertices
  curve,        ///< a whole curve
  loop,         ///< of points
  mapped,       ///< another representation, elsewhere
  moved,        ///< tessellated items, elsewhere
  tessellated,  ///< holds faces and edges of points in lists
  strip,        ///< lines of points in a list
  triangles,    ///< triangles of points in a list
};

/// The role of a record with that type; of a complex instance the first one that a keyword has.
Role role_of(const TypeTable& types, TypeId type);

/// What is kept of a record's text, for reading geometry.
enum class Kept : std::uint8_t { nothing, coordinates, text };

Kept kept_of(const TypeTable& types, TypeId type);

}  // namespace Kessel::Geometry
