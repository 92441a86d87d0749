// Frames from placements and transformation operators (ISO 10303-42).
#pragma once

#include "geometry/geometry_records.h"
#include "geometry/transformation.h"

namespace Kessel::Geometry {

/// The frame of an AXIS2_PLACEMENT_3D, or what a CARTESIAN_TRANSFORMATION_OPERATOR_3D does to
/// points, in the units of the file. Throws BadGeometry for all else.
Frame read_frame(const GeometryRecords& records, Index placement);

/// A DIRECTION; its length does not matter.
Vector read_direction(const GeometryRecords& records, Index direction);

/// A CARTESIAN_POINT, or that of a VERTEX_POINT.
Vector read_point(const GeometryRecords& records, Index point);

}  // namespace Kessel::Geometry
