// What the files of a split by placement are called.
#pragma once

#include <filesystem>
#include <vector>

#include "kessel/options.h"
#include "placement/placement.h"

namespace Kessel {

/// The names of the files of `placement`, without a folder, as products/file_names.h has it.
std::vector<std::filesystem::path> placed_names(const Instances& instances,
                                                const Products& products,
                                                const Placement& placement, NameStyle style);

}  // namespace Kessel
