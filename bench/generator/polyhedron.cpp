// Builds bodies with plane faces.

#include "polyhedron.h"

namespace Kessel::bench {
namespace {

std::uint32_t index_of(std::size_t value) {
  return static_cast<std::uint32_t>(value);
}

// Adds the quadrangle `corners` to `body`, as two triangles when `split` is set.
void add_quadrangle(Polyhedron& body, const std::vector<std::uint32_t>& corners, bool split) {
  if (!split) {
    body.faces.push_back(corners);
    return;
  }
  body.faces.push_back({corners[0], corners[1], corners[2]});
  body.faces.push_back({corners[0], corners[2], corners[3]});
}

// Adds the bottom cap (corners 0 to `corners` - 1, seen from below) and the top cap (the corners
// from `top` on) to `body`.
void add_caps(Polyhedron& body, std::size_t corners, std::size_t top) {
  std::vector<std::uint32_t> lower;
  std::vector<std::uint32_t> upper;
  for (std::size_t i = 0; i < corners; ++i) {
    lower.push_back(index_of(corners - 1 - i));
    upper.push_back(index_of(top + i));
  }
  body.faces.push_back(lower);
  body.faces.push_back(upper);
}

}  // namespace

Polyhedron prism(const Frame& frame, const std::vector<Point2>& outline, double height) {
  const std::size_t count = outline.size();
  Polyhedron body;
  for (const Point2& corner : outline)
    body.points.push_back(frame.point_outside({corner.x, corner.y, 0.0}));
  for (const Point2& corner : outline)
    body.points.push_back(frame.point_outside({corner.x, corner.y, height}));
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t next = (i + 1) % count;
    body.faces.push_back(
        {index_of(i), index_of(next), index_of(count + next), index_of(count + i)});
  }
  add_caps(body, count, count);
  return body;
}

Polyhedron box(const Frame& frame, const Vec3& size) {
  return prism(frame, {{0.0, 0.0}, {size.x, 0.0}, {size.x, size.y}, {0.0, size.y}}, size.z);
}

Polyhedron faceted_column(std::size_t face_count, double radius) {
  const double ring_height = 0.5;
  const double waist = 0.9975;  // every second ring is a little narrower
  if (face_count < 6) face_count = 6;
  const std::size_t flanks = face_count - 2;
  const std::size_t corners = flanks < 40 ? 4 : 20;
  const std::size_t bands = flanks / corners;
  // What the division leaves over is made up by cutting quadrangles of the first band in two.
  std::size_t left_to_split = flanks % corners;
  Polyhedron body;
  for (std::size_t ring = 0; ring <= bands; ++ring) {
    const double ring_radius = ring % 2 == 0 ? radius : radius * waist;
    for (std::size_t i = 0; i < corners; ++i) {
      const Point2 corner = circle_corner(i, corners);
      body.points.push_back({ring_radius * corner.x, ring_radius * corner.y,
                             ring_height * static_cast<double>(ring)});
    }
  }
  for (std::size_t band = 0; band < bands; ++band) {
    const std::size_t lower = band * corners;
    const std::size_t upper = lower + corners;
    for (std::size_t i = 0; i < corners; ++i) {
      const std::size_t next = (i + 1) % corners;
      const bool split = left_to_split > 0;
      if (split) --left_to_split;
      add_quadrangle(body,
                     {index_of(lower + i), index_of(lower + next), index_of(upper + next),
                      index_of(upper + i)},
                     split);
    }
  }
  add_caps(body, corners, bands * corners);
  return body;
}

Point2 circle_corner(std::size_t index, std::size_t count) {
  const std::size_t quarter = 4 * index / count;
  const double t = static_cast<double>(4 * index % count) / static_cast<double>(count);
  const double x = (1.0 - t * t) / (1.0 + t * t);
  const double y = 2.0 * t / (1.0 + t * t);
  switch (quarter) {
    case 0:
      return {x, y};
    case 1:
      return {-y, x};
    case 2:
      return {-x, -y};
    default:
      return {y, -x};
  }
}

}  // namespace Kessel::bench
