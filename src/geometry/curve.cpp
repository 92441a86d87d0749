#include "geometry/curve.h"

#include <algorithm>

namespace Kessel::Geometry {

namespace {

struct Piece {
  double from;
  double to;
  Vector begin;
  Vector end;
  int depth;
};

/// How far `between` is beside the box around a piece's ends.
double overhang(const Vector& between, const Piece& piece) {
  double most = 0;
  for (double Vector::*axis : {&Vector::x, &Vector::y, &Vector::z}) {
    const auto [low, high] = std::minmax(piece.begin.*axis, piece.end.*axis);
    most = std::max({most, low - between.*axis, between.*axis - high});
  }
  return most;
}

bool is_near(const Curve& curve, const Piece& piece, double chord) {
  constexpr double OVERHANG = 0.01;  // of the chord
  for (const double part : {0.5, 0.25, 0.75}) {
    const Vector between = curve.at(piece.from + part * (piece.to - piece.from));
    if (!(distance_to_piece(between, piece.begin, piece.end) <= chord)) return false;
    if (!(overhang(between, piece) <= OVERHANG * chord)) return false;
  }
  return true;
}

}  // namespace

void trace_by_halves(const Curve& curve, double from, double to, const Fineness& fineness,
                     Points& points) {
  constexpr int MOST_HALVINGS = 12;
  // Two pieces to begin with, so that no S looks straight.
  const double middle = 0.5 * (from + to);
  const Vector between = curve.at(middle);
  std::vector<Piece> open{{middle, to, between, curve.at(to), 1},
                          {from, middle, curve.at(from), between, 1}};
  while (!open.empty()) {
    const Piece piece = open.back();
    open.pop_back();
    require(is_finite(piece.begin) && is_finite(piece.end));
    fineness.budget->spend(1);
    if (piece.depth >= MOST_HALVINGS || is_near(curve, piece, fineness.chord)) {
      points.push_back(piece.end);
      continue;
    }
    const double half = 0.5 * (piece.from + piece.to);
    const Vector there = curve.at(half);
    open.push_back({half, piece.to, there, piece.end, piece.depth + 1});
    open.push_back({piece.from, half, piece.begin, there, piece.depth + 1});
  }
}

void trace_whole(const Curve& curve, double from, double to, const Fineness& fineness,
                 Points& points) {
  require(std::isfinite(from) && std::isfinite(to) && from < to);
  points.push_back(curve.at(from));
  if (curve.period() > 0 && to > curve.end()) {
    if (from < curve.end()) curve.trace(from, curve.end(), fineness, points);
    from = curve.begin();
    to -= curve.period();
    if (!(from < to)) return;
  }
  curve.trace(from, to, fineness, points);
}

double way_around(double from, double to, double period) {
  constexpr double SMALLEST = 1e-12;  // of the period: less is all around
  double way = std::fmod(to - from, period);
  if (way < 0) way += period;
  return way <= SMALLEST * period ? period : way;
}

}  // namespace Kessel::Geometry
