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

/// The same for what is said of products: a record that speaks of one file's products alone, or of
/// their usages, is missing there. Of sound inputs only: a style that refers to a point of another
/// part, as none does, goes where both are.
std::vector<std::string> check_remarks(const Instances& instances, const Products& products,
                                       const Placement& placement);

}  // namespace Kessel
