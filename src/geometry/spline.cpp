#include "geometry/spline.h"

#include <algorithm>
#include <array>
#include <utility>

#include "geometry/least_distance.h"

namespace Kessel::Geometry {

namespace {

void require_poles(int degree, std::size_t poles) {
  require(degree >= 1 && degree <= SplineCurve::MOST_DEGREE);
  require(poles > static_cast<std::size_t>(degree));
}

}  // namespace

SplineCurve::SplineCurve(SplineData data) : data_(std::move(data)) {
  require_poles(data_.degree, data_.poles.size());
  require(data_.knots.size() == data_.poles.size() + degree() + 1);
  require(std::all_of(data_.knots.begin(), data_.knots.end(),
                      [](double knot) { return std::isfinite(knot); }));
  require(std::is_sorted(data_.knots.begin(), data_.knots.end()));
  require(begin() < end());
  require(data_.weights.empty() || data_.weights.size() == data_.poles.size());
  require(std::all_of(data_.weights.begin(), data_.weights.end(),
                      [](double weight) { return std::isnormal(weight) && weight > 0; }));
  Vector low = data_.poles.front();
  Vector high = low;
  for (const Vector& pole : data_.poles) {
    require(is_finite(pole));
    low = {std::min(low.x, pole.x), std::min(low.y, pole.y), std::min(low.z, pole.z)};
    high = {std::max(high.x, pole.x), std::max(high.y, pole.y), std::max(high.z, pole.z)};
  }
  size_ = std::max({high.x - low.x, high.y - low.y, high.z - low.z});
  closes_ = distance(at(begin()), at(end())) <= 1e-7 * size_;
}

/// The knot in front of which nothing, and behind which something, of the curve has effect at `t`.
std::size_t SplineCurve::span_of(double t) const {
  const auto first = data_.knots.begin() + static_cast<std::ptrdiff_t>(degree()) + 1;
  const auto last = data_.knots.begin() + static_cast<std::ptrdiff_t>(data_.poles.size());
  const auto behind = std::upper_bound(first, last, t);
  std::size_t span = static_cast<std::size_t>(behind - data_.knots.begin()) - 1;
  // The end belongs to the last span that has a length.
  while (span > degree() && !(data_.knots[span] < data_.knots[span + 1])) --span;
  return span;
}

/// By de Boor's way: means of neighbours, again and again.
Vector SplineCurve::at(double t) const {
  struct Weighted {
    Vector point;  // times its weight
    double weight;
  };
  std::array<Weighted, MOST_DEGREE + 1> means;
  t = std::clamp(t, begin(), end());
  const std::size_t span = span_of(t);
  const std::size_t first = span - degree();
  for (std::size_t i = 0; i <= degree(); ++i) {
    const double weight = data_.weights.empty() ? 1 : data_.weights[first + i];
    means[i] = {weight * data_.poles[first + i], weight};
  }
  for (std::size_t round = 1; round <= degree(); ++round) {
    for (std::size_t i = degree(); i >= round; --i) {
      const double low = data_.knots[first + i];
      const double high = data_.knots[first + i + degree() + 1 - round];
      const double part = high > low ? (t - low) / (high - low) : 0;
      means[i] = {(1 - part) * means[i - 1].point + part * means[i].point,
                  (1 - part) * means[i - 1].weight + part * means[i].weight};
    }
  }
  return (1 / means[degree()].weight) * means[degree()].point;
}

double SplineCurve::nearest(const Vector& point) const {
  // Most edges end where their curves do.
  const double near = 1e-9 * size_;
  if (distance(point, at(begin())) <= near) return begin();
  if (distance(point, at(end())) <= near) return end();
  const int tries = 2 * data_.degree + 2;  // in each span
  std::vector<double> grid;
  for (std::size_t i = degree(); i < data_.poles.size(); ++i) {
    const double from = data_.knots[i];
    const double to = data_.knots[i + 1];
    for (int k = 0; from < to && k < tries; ++k) grid.push_back(from + (to - from) * k / tries);
  }
  grid.push_back(end());
  return least_distance(*this, grid, point);
}

void SplineCurve::trace(double from, double to, const Fineness& fineness, Points& points) const {
  double at_knot = from;
  const auto trace_to = [&](double knot) {
    if (!(at_knot < knot)) return;
    if (data_.degree == 1) {
      fineness.budget->spend(1);
      points.push_back(at(knot));
    } else {
      // Curves of higher degrees may turn more often between two knots.
      const int pieces = std::max(1, data_.degree - 2);
      const double step = (knot - at_knot) / pieces;
      for (int i = 0; i < pieces; ++i) {
        const double end = i + 1 == pieces ? knot : at_knot + (i + 1) * step;
        trace_by_halves(*this, at_knot + i * step, end, fineness, points);
      }
    }
    at_knot = knot;
  };
  const auto behind = std::upper_bound(data_.knots.begin(), data_.knots.end(), from);
  for (auto knot = behind; knot != data_.knots.end() && *knot < to; ++knot) trace_to(*knot);
  trace_to(to);
}

std::vector<double> uniform_knots(int degree, std::size_t poles) {
  require_poles(degree, poles);
  std::vector<double> knots;
  const int count = static_cast<int>(poles) + degree + 1;
  for (int i = 0; i < count; ++i) knots.push_back(i - degree);
  return knots;
}

std::vector<double> quasi_uniform_knots(int degree, std::size_t poles) {
  std::vector<double> knots = uniform_knots(degree, poles);
  const double last = static_cast<double>(poles) - degree;
  for (double& knot : knots) knot = std::clamp(knot, 0.0, last);
  return knots;
}

std::vector<double> bezier_knots(int degree, std::size_t poles) {
  require_poles(degree, poles);
  const std::size_t size = static_cast<std::size_t>(degree);
  require((poles - 1) % size == 0);
  std::vector<double> knots{0};
  for (std::size_t i = 0; i + 1 < poles + size; ++i) {
    knots.push_back(static_cast<double>(i / size));
  }
  knots.push_back(knots.back());
  return knots;
}

}  // namespace Kessel::Geometry
