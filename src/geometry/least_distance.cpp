#include "geometry/least_distance.h"

namespace Kessel::Geometry {

double least_distance(const Curve& curve, std::span<const double> grid, const Vector& point) {
  std::size_t best = 0;
  double least = distance(curve.at(grid[0]), point);
  for (std::size_t i = 1; i < grid.size(); ++i) {
    const double there = distance(curve.at(grid[i]), point);
    if (there < least) {
      least = there;
      best = i;
    }
  }
  // The golden section of what is around it.
  constexpr double GOLDEN = 0.6180339887498949;
  constexpr int ROUNDS = 60;
  double low = grid[best == 0 ? 0 : best - 1];
  double high = grid[best + 1 == grid.size() ? best : best + 1];
  double a = high - GOLDEN * (high - low);
  double b = low + GOLDEN * (high - low);
  double at_a = distance(curve.at(a), point);
  double at_b = distance(curve.at(b), point);
  for (int round = 0; round < ROUNDS && a < b; ++round) {
    if (at_a <= at_b) {
      high = b;
      b = a;
      at_b = at_a;
      a = high - GOLDEN * (high - low);
      at_a = distance(curve.at(a), point);
    } else {
      low = a;
      a = b;
      at_a = at_b;
      b = low + GOLDEN * (high - low);
      at_b = distance(curve.at(b), point);
    }
  }
  const double found = 0.5 * (low + high);
  return distance(curve.at(found), point) <= least ? found : grid[best];
}

}  // namespace Kessel::Geometry
