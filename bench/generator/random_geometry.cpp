// Makes random frames and outlines with plain arithmetic only, so that all machines agree.

#include "random_geometry.h"

namespace Kessel::bench {
namespace {

// Returns a whole number from -9 to 9.
double small_number(Random& random) {
  return static_cast<double>(random.below(19)) - 9.0;
}

}  // namespace

Frame random_frame(Random& random, const Vec3& origin) {
  // The rotation of a quaternion of small whole numbers; its real part keeps it from being zero.
  const double w = static_cast<double>(random.below(9)) + 1.0;
  const double x = small_number(random);
  const double y = small_number(random);
  const double z = small_number(random);
  const Vec3 axis{2.0 * (x * z + w * y), 2.0 * (y * z - w * x), w * w - x * x - y * y + z * z};
  const Vec3 ref_direction{w * w + x * x - y * y - z * z, 2.0 * (x * y + w * z),
                           2.0 * (x * z - w * y)};
  return {origin, normalised(axis), normalised(ref_direction)};
}

std::vector<Point2> random_outline(Random& random, std::size_t corners, double inner,
                                   double outer) {
  std::vector<Point2> outline;
  for (std::size_t i = 0; i < corners; ++i) {
    const double radius = random.length(inner, outer);
    const Point2 direction = circle_corner(i, corners);
    outline.push_back({radius * direction.x, radius * direction.y});
  }
  return outline;
}

}  // namespace Kessel::bench
