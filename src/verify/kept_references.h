// References of the input to files that are no part of the split.
#pragma once

#include <filesystem>
#include <set>

#include "join/joining.h"
#include "kessel/options.h"

namespace Kessel {

/// Gives names of other files that a split of `in` wrote as they are seen from `outdir`, or after
/// copies that it made there, the texts that they have in `in`, so that what differs then does so
/// in something else. Throws InputError where the input cannot be read.
void edit_kept_references(const std::filesystem::path& in, const Options& options,
                          const std::filesystem::path& outdir, Joining& joining);

/// The files to which kept references lead, and those that these refer to in turn, as far as they
/// can be read: paths without links.
std::set<std::filesystem::path> files_behind_kept_references(const Joining& joining);

}  // namespace Kessel
