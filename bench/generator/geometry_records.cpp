// Writes points, directions and placements.

#include "geometry_records.h"

namespace Kessel::bench {

InstanceId write_point(StepWriter& out, const Vec3& point) {
  return out.add("CARTESIAN_POINT", "", point);
}

InstanceId write_direction(StepWriter& out, const Vec3& direction) {
  return out.add("DIRECTION", "", direction);
}

InstanceId write_placement(StepWriter& out, const Frame& frame) {
  const InstanceId origin = write_point(out, frame.origin);
  const InstanceId axis = write_direction(out, frame.axis);
  const InstanceId ref_direction = write_direction(out, frame.ref_direction);
  return out.add("AXIS2_PLACEMENT_3D", "", origin, axis, ref_direction);
}

InstanceId write_line(StepWriter& out, InstanceId point, const Vec3& direction) {
  const InstanceId vector = out.add("VECTOR", "", write_direction(out, direction), 1.0);
  return out.add("LINE", "", point, vector);
}

}  // namespace Kessel::bench
