// Frames in space, and the ways between them.
#pragma once

#include "geometry/vector.h"

namespace Kessel::Geometry {

/// An origin and three axes, with which coordinates become points. Of a placement, the axes are
/// perpendicular and of length 1; of a transformation they may be longer, or mirror.
struct Frame {
  Vector origin;
  Vector x{1, 0, 0};
  Vector y{0, 1, 0};
  Vector z{0, 0, 1};

  Vector direction(const Vector& v) const { return v.x * x + v.y * y + v.z * z; }
  Vector point(const Vector& p) const { return origin + direction(p); }
};

/// What does `inner` first, and then `outer`.
Frame after(const Frame& outer, const Frame& inner);

/// Undoes `frame`. Throws BadGeometry where its axes lie in a plane.
Frame inverse(const Frame& frame);

/// The same in another unit: all lengths times `factor`.
Frame scaled(double factor, const Frame& frame);

/// A perpendicular frame whose z axis is along `axis`, and whose x axis is as near to `reference`
/// as that allows. Throws BadGeometry where these do not say which.
Frame perpendicular_frame(const Vector& origin, const Vector& axis, const Vector& reference);

/// `v` with length 1. Throws BadGeometry where it has none.
Vector unit(const Vector& v);

/// Some direction that is not along `axis`, to begin a frame with.
Vector any_reference(const Vector& axis);

}  // namespace Kessel::Geometry
