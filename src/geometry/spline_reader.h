// Reads B-spline curves from records (ISO 10303-42).
#pragma once

#include "geometry/geometry_records.h"
#include "geometry/spline.h"

namespace Kessel::Geometry {

/// The B-spline curve that `record` is: with knots, uniform, quasi-uniform or of Bezier pieces,
/// rational or not. Throws BadGeometry where it does not say what it should.
SplineData read_spline(const GeometryRecords& records, Index record);

}  // namespace Kessel::Geometry
