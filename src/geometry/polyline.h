// Straight pieces one behind the other.
#pragma once

#include "geometry/curve.h"

namespace Kessel::Geometry {

/// A polyline (ISO 10303-42), or a curve of others that was traced.
class Polyline final : public Curve {
 public:
  /// Throws BadGeometry where there are fewer than two points.
  explicit Polyline(Points points);

  Vector at(double t) const override;
  double begin() const override { return 0; }
  double end() const override { return static_cast<double>(points_.size() - 1); }
  double period() const override { return closes_ ? end() : 0; }
  double nearest(const Vector& point) const override;
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  Points points_;
  bool closes_ = false;
};

}  // namespace Kessel::Geometry
