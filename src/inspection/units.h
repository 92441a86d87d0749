// The units that geometric contexts assign.
#pragma once

#include "instances/instances.h"
#include "kessel/summary.h"

namespace Kessel {

/// Puts the length and plane angle units that contexts assign (ISO 10303-41 and -43) into
/// `summary`, the most used first.
void sum_up_units(const Instances& instances, Summary& summary);

}  // namespace Kessel
