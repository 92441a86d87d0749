// Whether a placement is what it should be.
#pragma once

#include <string>
#include <vector>

#include "placement/placement.h"

namespace Kessel {

/// What is wrong with `placement` by the invariants of placement.h, a sentence each; empty where
/// nothing is. Works everything out from the input's records, and shares nothing with the steps
/// that made the placement. For tests: takes a few times as long as placing.
std::vector<std::string> check_placement(const Instances& instances, const Products& products,
                                         const Placement& placement);

}  // namespace Kessel
