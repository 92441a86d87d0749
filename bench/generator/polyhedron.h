// Bodies with plane faces, as points and loops of points.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "vec3.h"

namespace Kessel::bench {

// A closed body with plane faces. A face is the loop of its corners (positions in `points`),
// counter- clockwise as seen from outside; every edge belongs to two faces, which run along it in
// opposite directions.
struct Polyhedron {
  std::vector<Vec3> points;
  std::vector<std::vector<std::uint32_t>> faces;
};

// A point of the plane (millimetres).
struct Point2 {
  double x = 0.0;
  double y = 0.0;
};

// Returns the body that stands on `outline` (a simple polygon, counter-clockwise, in the plane z =
// 0 of `frame`) and is `height` millimetres high.
Polyhedron prism(const Frame& frame, const std::vector<Point2>& outline, double height);

// Returns a box with one corner at the origin of `frame` and the edges `size` (millimetres).
Polyhedron box(const Frame& frame, const Vec3& size);

// Returns a column of stacked rings whose flanks are cut into facets, with exactly `face_count`
// faces (at least 6), `radius` millimetres wide and half a millimetre high per ring.
Polyhedron faceted_column(std::size_t face_count, double radius);

// Returns corner `index` of `count` on the circle of radius 1 around the origin. The corners stand
// in rising angle but not at equal angles; no trigonometry is needed, so every machine gets the
// same.
Point2 circle_corner(std::size_t index, std::size_t count);

}  // namespace Kessel::bench
