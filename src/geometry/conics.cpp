#include "geometry/conics.h"

#include <algorithm>
#include <numbers>

namespace Kessel::Geometry {

namespace {

constexpr double TURN = 2 * std::numbers::pi;

void require_size(double size) {
  require(std::isnormal(size) && size > 0);
}

}  // namespace

Line::Line(const Vector& point, const Vector& direction) : point_(point), direction_(direction) {
  require_size(length(direction));
}

double Line::nearest(const Vector& point) const {
  return dot(point - point_, direction_) / dot(direction_, direction_);
}

void Line::trace(double, double to, const Fineness& fineness, Points& points) const {
  fineness.budget->spend(1);
  points.push_back(at(to));
}

Ellipse::Ellipse(const Frame& frame, double first_radius, double second_radius)
    : frame_(frame), first_(first_radius), second_(second_radius) {
  require_size(first_);
  require_size(second_);
}

double Ellipse::period() const {
  return TURN;
}

Vector Ellipse::at(double t) const {
  return frame_.point({first_ * std::cos(t), second_ * std::sin(t), 0});
}

double Ellipse::nearest(const Vector& point) const {
  const Vector p = point - frame_.origin;
  return std::atan2(dot(p, frame_.y) / second_, dot(p, frame_.x) / first_);
}

/// Where it goes farthest along an axis, in order, and `to` behind them.
std::vector<double> Ellipse::farthest(double from, double to) const {
  constexpr double LEAST_WAY = 1e-9;  // of the larger radius: what goes less lies across the axis
  constexpr double LEAST_ANGLE = 1e-9;
  std::vector<double> found;
  for (double Vector::*axis : {&Vector::x, &Vector::y, &Vector::z}) {
    const double a = first_ * frame_.x.*axis;
    const double b = second_ * frame_.y.*axis;
    if (!(std::hypot(a, b) > LEAST_WAY * std::max(first_, second_))) continue;
    constexpr double HALF = TURN / 2;
    double t = std::atan2(b, a);
    t += HALF * std::ceil((from - t) / HALF);
    for (; t < to - LEAST_ANGLE; t += HALF) {
      if (t > from + LEAST_ANGLE) found.push_back(t);
    }
  }
  found.push_back(to);
  std::sort(found.begin(), found.end());
  return found;
}

void Ellipse::trace(double from, double to, const Fineness& fineness, Points& points) const {
  // As a circle's image it is nowhere farther from its chord than the larger radius allows.
  constexpr double LARGEST_STEP = TURN / 12;
  constexpr double MOST_STEPS = 10'000;
  const double flatness = fineness.chord / std::max(first_, second_);
  // The cosine cannot tell small angles.
  const double step =
      flatness < 1e-8 ? std::sqrt(8 * flatness) : 2 * std::acos(1 - std::min(1.0, flatness));
  for (const double next : farthest(from, to)) {
    const double fewest = std::ceil((next - from) / std::min(step, LARGEST_STEP) - 1e-9);
    if (fewest < 1 && next < to) continue;  // Two axes at once.
    const int steps = static_cast<int>(std::clamp(fewest, 1.0, MOST_STEPS));
    fineness.budget->spend(static_cast<std::uint64_t>(steps));
    for (int i = 1; i <= steps; ++i) points.push_back(at(from + (next - from) * i / steps));
    from = next;
  }
}

Parabola::Parabola(const Frame& frame, double focal_distance)
    : frame_(frame), focal_(focal_distance) {
  require_size(focal_);
}

Vector Parabola::at(double t) const {
  return frame_.point({focal_ * t * t, 2 * focal_ * t, 0});
}

double Parabola::nearest(const Vector& point) const {
  return dot(point - frame_.origin, frame_.y) / (2 * focal_);
}

void Parabola::trace(double from, double to, const Fineness& fineness, Points& points) const {
  trace_by_halves(*this, from, to, fineness, points);
}

Hyperbola::Hyperbola(const Frame& frame, double semi_axis, double semi_imaginary_axis)
    : frame_(frame), first_(semi_axis), second_(semi_imaginary_axis) {
  require_size(first_);
  require_size(second_);
}

Vector Hyperbola::at(double t) const {
  return frame_.point({first_ * std::cosh(t), second_ * std::sinh(t), 0});
}

double Hyperbola::nearest(const Vector& point) const {
  return std::asinh(dot(point - frame_.origin, frame_.y) / second_);
}

void Hyperbola::trace(double from, double to, const Fineness& fineness, Points& points) const {
  trace_by_halves(*this, from, to, fineness, points);
}

}  // namespace Kessel::Geometry
