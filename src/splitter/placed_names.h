// What the files of a split by placement are called.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "kessel/options.h"
#include "placement/placement.h"

namespace Kessel {

/// The names of the files of `placement`, without a folder, as products/file_names.h has it.
std::vector<std::filesystem::path> placed_names(const Instances& instances,
                                                const Products& products,
                                                const Placement& placement, NameStyle style);

/// The name of the file of an input without products: after the input, called `input` (UTF-8).
std::filesystem::path name_after(const std::string& input, NameStyle style);

}  // namespace Kessel
