// Reads curves from records (ISO 10303-42).
#pragma once

#include "geometry/curve.h"
#include "geometry/geometry_records.h"

namespace Kessel::Geometry {

/// How one representation's curves are read.
struct CurveReading {
  const GeometryRecords& records;
  double angle = 1;  ///< its unit of plane angles, radians
  /// Curves that consist of others are traced while they are read.
  Fineness fineness;
};

/// The curve in space that `record` is or leads to. Throws BadGeometry where that cannot be said.
CurvePointer read_curve(const CurveReading& reading, Index record);

/// The curve from its beginning to its end, or once around. Throws BadGeometry for one without
/// ends.
void trace_all(const Curve& curve, const Fineness& fineness, Points& points);

}  // namespace Kessel::Geometry
