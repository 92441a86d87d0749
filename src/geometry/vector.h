// Points and directions.
#pragma once

#include <cmath>

namespace Kessel::Geometry {

/// A point, or the way from one to another.
struct Vector {
  double x = 0;
  double y = 0;
  double z = 0;
};

inline Vector operator+(const Vector& a, const Vector& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector operator-(const Vector& a, const Vector& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector operator*(double factor, const Vector& v) {
  return {factor * v.x, factor * v.y, factor * v.z};
}
inline double dot(const Vector& a, const Vector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vector cross(const Vector& a, const Vector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vector& v) {
  return std::hypot(v.x, v.y, v.z);
}
inline double distance(const Vector& a, const Vector& b) {
  return length(a - b);
}
inline bool is_finite(const Vector& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// How far `p` is from the piece of a straight line between `a` and `b`.
inline double distance_to_piece(const Vector& p, const Vector& a, const Vector& b) {
  const Vector along = b - a;
  const double squared = dot(along, along);
  if (!(squared > 0)) return distance(p, a);
  const double t = std::fmin(1, std::fmax(0, dot(p - a, along) / squared));
  return distance(p, a + t * along);
}

}  // namespace Kessel::Geometry
