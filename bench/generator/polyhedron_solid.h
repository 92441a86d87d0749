// Bodies with plane faces as boundary representation (ISO 10303-42).

#pragma once

#include <string_view>

#include "polyhedron.h"
#include "solid.h"
#include "step_writer.h"

namespace Kessel::bench {

// How a solid's points, directions and vectors are written.
enum class GeometryStyle {
  separate,  // every line and plane has its own, as most systems write them
  common,    // equal directions and vectors are written once, corners serve as points of lines
};

// Writes `body` as a MANIFOLD_SOLID_BREP named `name` (UTF-8) with all records below it.
Solid write_polyhedron(StepWriter& out, std::string_view name, const Polyhedron& body,
                       GeometryStyle style = GeometryStyle::separate);

}  // namespace Kessel::bench
