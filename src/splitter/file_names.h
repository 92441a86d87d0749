// What the files of a split are called.
#pragma once

#include <string>
#include <vector>

#include "kessel/options.h"
#include "placement/placement.h"

namespace Kessel {

/// Names of the files of `placement`, in UTF-8 and each unlike all others: after the record of the
/// product, or after its name, in the order of the products. A root that only holds tops together
/// is called "Root.stp".
std::vector<std::string> file_names(const Instances& instances, const Products& products,
                                    const Placement& placement, NameStyle style);

}  // namespace Kessel
