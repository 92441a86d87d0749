// Writes units and geometric contexts as complex instances.

#include "geometric_context.h"

namespace Kessel::bench {
namespace {

InstanceId write_degree(StepWriter& out, InstanceId radian) {
  const InstanceId exponents = out.add("DIMENSIONAL_EXPONENTS", 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0);
  const InstanceId size = out.add("PLANE_ANGLE_MEASURE_WITH_UNIT",
                                  Typed{"PLANE_ANGLE_MEASURE", 0.0174532925199433}, radian);
  return out.add_complex(partial("CONVERSION_BASED_UNIT", "DEGREE", size),
                         partial("NAMED_UNIT", exponents), partial("PLANE_ANGLE_UNIT"));
}

}  // namespace

Units write_units(StepWriter& out, AngleUnit angle_unit) {
  Units units;
  units.length = out.add_complex(partial("LENGTH_UNIT"), partial("NAMED_UNIT", Derived{}),
                                 partial("SI_UNIT", Symbol{"MILLI"}, Symbol{"METRE"}));
  units.plane_angle = out.add_complex(partial("NAMED_UNIT", Derived{}), partial("PLANE_ANGLE_UNIT"),
                                      partial("SI_UNIT", Unset{}, Symbol{"RADIAN"}));
  if (angle_unit == AngleUnit::degree) units.plane_angle = write_degree(out, units.plane_angle);
  units.solid_angle = out.add_complex(partial("NAMED_UNIT", Derived{}),
                                      partial("SI_UNIT", Unset{}, Symbol{"STERADIAN"}),
                                      partial("SOLID_ANGLE_UNIT"));
  return units;
}

InstanceId write_geometric_context(StepWriter& out, const Units& units) {
  const InstanceId uncertainty =
      out.add("UNCERTAINTY_MEASURE_WITH_UNIT", Typed{"LENGTH_MEASURE", 1e-7}, units.length,
              "distance_accuracy_value", "confusion accuracy");
  return out.add_complex(partial("GEOMETRIC_REPRESENTATION_CONTEXT", 3),
                         partial("GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT", list(uncertainty)),
                         partial("GLOBAL_UNIT_ASSIGNED_CONTEXT",
                                 list(units.length, units.plane_angle, units.solid_angle)),
                         partial("REPRESENTATION_CONTEXT", "", "3D"));
}

}  // namespace Kessel::bench
