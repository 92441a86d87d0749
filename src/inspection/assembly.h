// From a file that was read to its product structure as plain data.
#pragma once

#include "inspection/inspected_file.h"
#include "kessel/assembly.h"

namespace Kessel {

/// The product structure of `inspected`.
Assembly assembly_of(const InspectedFile& inspected);

}  // namespace Kessel
