#include "geometry/transformation.h"

#include "geometry/bad_geometry.h"

namespace Kessel::Geometry {

Frame after(const Frame& outer, const Frame& inner) {
  return {outer.point(inner.origin), outer.direction(inner.x), outer.direction(inner.y),
          outer.direction(inner.z)};
}

Frame inverse(const Frame& frame) {
  // The rows of the inverse are perpendicular to the other two columns.
  const double volume = dot(cross(frame.x, frame.y), frame.z);
  require(std::isnormal(volume));
  const Vector a = (1 / volume) * cross(frame.y, frame.z);
  const Vector b = (1 / volume) * cross(frame.z, frame.x);
  const Vector c = (1 / volume) * cross(frame.x, frame.y);
  Frame result{{}, {a.x, b.x, c.x}, {a.y, b.y, c.y}, {a.z, b.z, c.z}};
  result.origin = -1 * result.direction(frame.origin);
  return result;
}

Frame scaled(double factor, const Frame& frame) {
  return {factor * frame.origin, factor * frame.x, factor * frame.y, factor * frame.z};
}

Vector unit(const Vector& v) {
  const double size = length(v);
  require(std::isnormal(size));
  return (1 / size) * v;
}

Vector any_reference(const Vector& axis) {
  const Vector z = unit(axis);
  return std::fabs(z.x) < 0.9 ? Vector{1, 0, 0} : Vector{0, 0, 1};
}

Frame perpendicular_frame(const Vector& origin, const Vector& axis, const Vector& reference) {
  constexpr double SMALLEST_SINE = 1e-9;
  const Vector z = unit(axis);
  const Vector along = unit(reference);
  const Vector x = along - dot(along, z) * z;
  require(length(x) > SMALLEST_SINE && is_finite(origin));
  const Vector first = unit(x);
  return {origin, first, cross(z, first), z};
}

}  // namespace Kessel::Geometry
