// Where a curve comes next to a point.
#pragma once

#include <span>

#include "geometry/curve.h"

namespace Kessel::Geometry {

/// The parameter of the point of `curve` next to `point`, looked for around the best of `grid`,
/// which are ascending parameters, dense enough that the curve does not turn much between two.
double least_distance(const Curve& curve, std::span<const double> grid, const Vector& point);

}  // namespace Kessel::Geometry
