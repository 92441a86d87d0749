// The records of points, directions and placements (ISO 10303-42).

#pragma once

#include "step_writer.h"
#include "vec3.h"

namespace Kessel::bench {

// Writes a CARTESIAN_POINT at `point` (millimetres) and returns it.
InstanceId write_point(StepWriter& out, const Vec3& point);

// Writes a DIRECTION and returns it.
InstanceId write_direction(StepWriter& out, const Vec3& direction);

// Writes an AXIS2_PLACEMENT_3D with a point and directions of its own and returns it.
InstanceId write_placement(StepWriter& out, const Frame& frame);

// Writes a LINE through `point` (a CARTESIAN_POINT) along `direction` (of length 1) and returns it.
InstanceId write_line(StepWriter& out, InstanceId point, const Vec3& direction);

}  // namespace Kessel::bench
