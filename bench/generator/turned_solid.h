// Turned bodies (cylinders, cones, discs around one axis) as boundary representation.

#pragma once

#include <string_view>
#include <vector>

#include "solid.h"
#include "step_writer.h"
#include "vec3.h"

namespace Kessel::bench {

// A corner of a turned body's profile: its distance from the axis and its height along the axis,
// both in millimetres.
struct ProfilePoint {
  double radius = 0.0;
  double height = 0.0;
};

// Writes the body that `profile` sweeps around the z axis of `frame` as a MANIFOLD_SOLID_BREP named
// `name` (UTF-8) with all records below it. The profile starts and ends on the axis (radius 0) and
// nowhere else touches it; the material lies to its left. The pieces that meet the axis are discs,
// so they stand at a right angle to it; the others may be cylinders, cones or flat rings.
Solid write_turned_solid(StepWriter& out, std::string_view name, const Frame& frame,
                         const std::vector<ProfilePoint>& profile);

// Returns the profile of a plain cylinder that stands on the plane z = 0 (millimetres).
std::vector<ProfilePoint> cylinder_profile(double radius, double height);

}  // namespace Kessel::bench
