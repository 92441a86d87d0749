#include "geometry/polyline.h"

#include <algorithm>
#include <utility>

namespace Kessel::Geometry {

Polyline::Polyline(Points points) : points_(std::move(points)) {
  require(points_.size() >= 2);
  double size = 0;
  for (const Vector& point : points_) {
    require(is_finite(point));
    size = std::max(size, distance(point, points_.front()));
  }
  closes_ = distance(points_.front(), points_.back()) <= 1e-7 * size;
}

Vector Polyline::at(double t) const {
  t = std::clamp(t, begin(), end());
  const std::size_t piece = std::min(static_cast<std::size_t>(t), points_.size() - 2);
  const double part = t - static_cast<double>(piece);
  return points_[piece] + part * (points_[piece + 1] - points_[piece]);
}

double Polyline::nearest(const Vector& point) const {
  double best = 0;
  double least = distance(points_[0], point);
  for (std::size_t i = 0; i + 1 < points_.size(); ++i) {
    const Vector along = points_[i + 1] - points_[i];
    const double squared = dot(along, along);
    if (!(squared > 0)) continue;
    const double part = std::clamp(dot(point - points_[i], along) / squared, 0.0, 1.0);
    const double there = distance(points_[i] + part * along, point);
    if (there < least) {
      least = there;
      best = static_cast<double>(i) + part;
    }
  }
  return best;
}

void Polyline::trace(double from, double to, const Fineness& fineness, Points& points) const {
  const std::size_t last = static_cast<std::size_t>(std::ceil(to));
  for (std::size_t i = static_cast<std::size_t>(std::floor(from)) + 1; i < last; ++i) {
    fineness.budget->spend(1);
    points.push_back(points_[i]);
  }
  fineness.budget->spend(1);
  points.push_back(at(to));
}

}  // namespace Kessel::Geometry
