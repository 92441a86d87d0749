// The edges and curves of shapes as points.
#pragma once

#include "geometry/curve_reader.h"

namespace Kessel::Geometry {

/// Appends the points of an EDGE_CURVE from its first vertex to its second one. Returns whether it
/// is straight. Throws BadGeometry where the records do not say what they are.
bool trace_edge(const CurveReading& reading, Index edge, Points& points);

/// Appends the points of a curve that stands for itself.
void trace_curve(const CurveReading& reading, Index curve, Points& points);

}  // namespace Kessel::Geometry
