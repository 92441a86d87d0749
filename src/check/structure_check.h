// Checks the product structure.
#pragma once

#include <istream>

#include "findings/finding_list.h"
#include "instances/instances.h"

namespace Kessel {

/// Adds to `findings` what a split of `instances`, read from `in`, has to pass over or cannot do.
void check_structure(std::istream& in, const Instances& instances, FindingList& findings);

}  // namespace Kessel
