// B-spline curves (ISO 10303-42), rational ones too.
#pragma once

#include "geometry/curve.h"

namespace Kessel::Geometry {

/// What makes a B-spline curve.
struct SplineData {
  int degree = 0;
  Points poles;
  std::vector<double> weights;  ///< as many as poles; none where all weigh the same
  std::vector<double> knots;    ///< each as often as it counts, ascending
};

class SplineCurve final : public Curve {
 public:
  static constexpr int MOST_DEGREE = 60;

  /// Throws BadGeometry where the numbers do not fit each other.
  explicit SplineCurve(SplineData data);

  Vector at(double t) const override;
  double begin() const override { return data_.knots[degree()]; }
  double end() const override { return data_.knots[data_.poles.size()]; }
  double period() const override { return closes_ ? end() - begin() : 0; }
  double nearest(const Vector& point) const override;
  void trace(double from, double to, const Fineness& fineness, Points& points) const override;

 private:
  std::size_t degree() const { return static_cast<std::size_t>(data_.degree); }
  std::size_t span_of(double t) const;

  SplineData data_;
  double size_ = 0;  // of the box around the poles, by its widest side
  bool closes_ = false;
};

/// The knots of curves that do not list them: all alike, all alike but for the ends, and those of
/// Bezier pieces. Throws BadGeometry where so many poles make no such curve.
std::vector<double> uniform_knots(int degree, std::size_t poles);
std::vector<double> quasi_uniform_knots(int degree, std::size_t poles);
std::vector<double> bezier_knots(int degree, std::size_t poles);

}  // namespace Kessel::Geometry
