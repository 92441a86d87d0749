// Points, directions and frames in space.

#pragma once

#include <cmath>

namespace Kessel::bench {

// A point (millimetres) or a direction (no unit).
struct Vec3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

inline Vec3 operator+(const Vec3& a, const Vec3& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3 operator-(const Vec3& a, const Vec3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 operator*(double factor, const Vec3& a) {
  return {factor * a.x, factor * a.y, factor * a.z};
}

// Returns the cross product of `a` and `b`.
inline Vec3 cross(const Vec3& a, const Vec3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// Returns `a` with length 1; `a` must not be zero.
inline Vec3 normalised(const Vec3& a) {
  const double length = std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
  return {a.x / length, a.y / length, a.z / length};
}

// A right-handed frame: its origin (millimetres), its z axis and its x axis, both of length 1 and
// at right angles (axis and ref_direction of an axis2_placement_3d, ISO 10303-42).
struct Frame {
  Vec3 origin;
  Vec3 axis{0.0, 0.0, 1.0};
  Vec3 ref_direction{1.0, 0.0, 0.0};

  // Returns the direction of the frame's y axis.
  Vec3 y_direction() const { return cross(axis, ref_direction); }

  // Returns the direction `local`, given in this frame, in the frame around it.
  Vec3 direction_outside(const Vec3& local) const {
    return local.x * ref_direction + local.y * y_direction() + local.z * axis;
  }

  // Returns the point `local`, given in this frame, in the frame around it (millimetres).
  Vec3 point_outside(const Vec3& local) const { return origin + direction_outside(local); }
};

// Returns a frame at `origin` (millimetres) whose axes are those of the frame around it.
inline Frame shifted_to(const Vec3& origin) {
  Frame frame;
  frame.origin = origin;
  return frame;
}

}  // namespace Kessel::bench
