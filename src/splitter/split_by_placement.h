// A split in the styles lean and nested.
#pragma once

#include <filesystem>
#include <vector>

#include "kessel/options.h"
#include "kessel/splitter.h"

namespace Kessel {

/// Splits `in` by its products (see placement/placement.h). What `split` promises holds: nothing is
/// written over, nothing is written before the input was read whole, every file that is returned
/// was written whole. Where there is one file only, that is a copy of the input.
std::vector<WrittenFile> split_by_placement(const std::filesystem::path& in,
                                            const std::filesystem::path& outdir,
                                            const Options& options);

}  // namespace Kessel
