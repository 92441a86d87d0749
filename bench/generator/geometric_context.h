// Units and geometric contexts (ISO 10303-41, ISO 10303-43).

#pragma once

#include "step_writer.h"

namespace Kessel::bench {

// The unit in which a context's plane angles are given.
enum class AngleUnit {
  radian,  // the SI unit
  degree,  // a CONVERSION_BASED_UNIT over the radian
};

// The units of a context: millimetres, the plane angle unit, steradians.
struct Units {
  InstanceId length;
  InstanceId plane_angle;
  InstanceId solid_angle;
};

// Writes the records of a set of units and returns them.
Units write_units(StepWriter& out, AngleUnit angle_unit = AngleUnit::radian);

// Writes a three-dimensional context with `units` and an uncertainty of 1e-7 mm and returns it (the
// complex instance of GEOMETRIC_REPRESENTATION_CONTEXT and its companions).
InstanceId write_geometric_context(StepWriter& out, const Units& units);

}  // namespace Kessel::bench
