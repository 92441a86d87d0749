// A solid as it was written.

#pragma once

#include <vector>

#include "step_writer.h"

namespace Kessel::bench {

// A written solid: its MANIFOLD_SOLID_BREP and its ADVANCED_FACEs in the order of the shell.
struct Solid {
  InstanceId brep;
  std::vector<InstanceId> faces;
};

}  // namespace Kessel::bench
