// Random frames and outlines.

#pragma once

#include <cstddef>
#include <vector>

#include "polyhedron.h"
#include "random.h"
#include "vec3.h"

namespace Kessel::bench {

// Returns a frame at `origin` (millimetres) that is turned at random.
Frame random_frame(Random& random, const Vec3& origin);

// Returns a simple polygon of `corners` corners around the origin, counter-clockwise, whose corners
// lie between `inner` and `outer` millimetres from it.
std::vector<Point2> random_outline(Random& random, std::size_t corners, double inner, double outer);

}  // namespace Kessel::bench
