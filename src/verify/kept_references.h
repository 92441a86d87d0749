// References of the input to files that are no part of the split.
#pragma once

#include <filesystem>
#include <functional>
#include <set>

#include "join/joining.h"
#include "sameness/compared_file.h"

namespace Kessel {

/// Gives names of other files in a split, which are seen from `outdir`, the texts of the input,
/// seen from `folder`, that lead to the same file, or to one of which there is a copy in `outdir`
/// that says the same: so that what differs then does so in something else. A name that leads
/// elsewhere than the input's gets a text of its own. Who asks `input` gets it.
void edit_kept_references(const std::function<const Sameness::ComparedFile&()>& input,
                          const std::filesystem::path& folder, const std::filesystem::path& outdir,
                          Joining& joining);

/// The files to which kept references lead, and those that these refer to in turn, as far as they
/// can be read: paths without links.
std::set<std::filesystem::path> files_behind_kept_references(const Joining& joining);

}  // namespace Kessel
