// Lines and conics (ISO 10303-42).
#pragma once

#include <limits>

#include "geometry/curve.h"
#include "geometry/transformation.h"

namespace Kessel::Geometry {

/// A curve without ends.
class EndlessCurve : public Curve {
 public:
  double begin() const override { return -std::numeric_limits<double>::infinity(); }
  double end() const override { return std::numeric_limits<double>::infinity(); }
  double period() const override { return 0; }
};

class Line final : public EndlessCurve {
 public:
  /// Throws BadGeometry where `direction` is zero.
  Line(const Vector& point, const Vector& direction);

  Vector at(double t) const override { return point_ + t * direction_; }
  double nearest(const Vector& point) const override;
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  Vector point_;
  Vector direction_;
};

/// A circle, too.
class Ellipse final : public EndlessCurve {
 public:
  /// Throws BadGeometry where a radius is not above 0.
  Ellipse(const Frame& frame, double first_radius, double second_radius);

  double period() const override;
  Vector at(double t) const override;
  double nearest(const Vector& point) const override;
  double parameter_unit(double angle) const override { return angle; }
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  std::vector<double> farthest(double from, double to) const;

  Frame frame_;
  double first_;
  double second_;
};

class Parabola final : public EndlessCurve {
 public:
  /// Throws BadGeometry where the distance to the focus is not above 0.
  Parabola(const Frame& frame, double focal_distance);

  Vector at(double t) const override;
  double nearest(const Vector& point) const override;
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  Frame frame_;
  double focal_;
};

class Hyperbola final : public EndlessCurve {
 public:
  /// Throws BadGeometry where a semi-axis is not above 0.
  Hyperbola(const Frame& frame, double semi_axis, double semi_imaginary_axis);

  Vector at(double t) const override;
  double nearest(const Vector& point) const override;
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  Frame frame_;
  double first_;
  double second_;
};

}  // namespace Kessel::Geometry
