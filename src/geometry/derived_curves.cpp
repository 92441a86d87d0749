#include "geometry/derived_curves.h"

#include <algorithm>

#include "geometry/least_distance.h"

namespace Kessel::Geometry {

double TrimmedCurve::of_basis(double t) const {
  const double there = is_reversed_ ? to_ - t : from_ + t;
  const bool is_beyond = basis_->period() > 0 && there > basis_->end();
  return is_beyond ? there - basis_->period() : there;
}

double TrimmedCurve::period() const {
  // All around, or as good as.
  const double around = basis_->period();
  return around > 0 && end() >= around * (1 - 1e-9) ? end() : 0;
}

double TrimmedCurve::nearest(const Vector& point) const {
  double there = basis_->nearest(point);
  const double around = basis_->period();
  if (around > 0) {
    there = from_ + std::fmod(there - from_, around);
    if (there < from_) there += around;
    // Outside, it belongs to the end that is nearer.
    if (there > to_ && there - to_ > from_ + around - there) there = from_;
  }
  there = std::clamp(there, from_, to_);
  return is_reversed_ ? to_ - there : there - from_;
}

void TrimmedCurve::trace(double from, double to, const Fineness& fineness, Points& points) const {
  if (!is_reversed_) {
    Points some;
    trace_whole(*basis_, from_ + from, from_ + to, fineness, some);
    points.insert(points.end(), some.begin() + 1, some.end());
    return;
  }
  Points some;
  trace_whole(*basis_, to_ - to, to_ - from, fineness, some);
  points.insert(points.end(), some.rbegin() + 1, some.rend());
}

void MovedCurve::trace(double from, double to, const Fineness& fineness, Points& points) const {
  const double largest = std::max({length(frame_.x), length(frame_.y), length(frame_.z)});
  const Fineness before{fineness.chord / largest, fineness.budget};
  const std::size_t first = points.size();
  basis_->trace(from, to, before, points);
  for (std::size_t i = first; i < points.size(); ++i) points[i] = frame_.point(points[i]);
}

Vector OffsetCurve::tangent(double t) const {
  const bool has_ends = std::isfinite(begin()) && std::isfinite(end());
  const double step = 1e-6 * (has_ends ? end() - begin() : 1);
  const double low = std::max(begin(), t - step);
  const double high = std::min(end(), t + step);
  return unit(basis_->at(high) - basis_->at(low));
}

Vector OffsetCurve::at(double t) const {
  return basis_->at(t) + offset_ * unit(cross(across_, tangent(t)));
}

double OffsetCurve::nearest(const Vector& point) const {
  constexpr int TRIES = 100;
  const double middle = basis_->nearest(point);
  const double reach = period() > 0 ? period() / 2 : 1;
  const bool has_ends = std::isfinite(begin()) && std::isfinite(end());
  const double low = has_ends ? begin() : middle - reach;
  const double high = has_ends ? end() : middle + reach;
  std::vector<double> grid;
  for (int i = 0; i <= TRIES; ++i) grid.push_back(low + (high - low) * i / TRIES);
  return least_distance(*this, grid, point);
}

void OffsetCurve::trace(double from, double to, const Fineness& fineness, Points& points) const {
  // Circles, too, which in halves alone would not seem to bend.
  constexpr int PIECES = 4;
  for (int i = 0; i < PIECES; ++i) {
    trace_by_halves(*this, from + (to - from) * i / PIECES, from + (to - from) * (i + 1) / PIECES,
                    fineness, points);
  }
}

}  // namespace Kessel::Geometry
