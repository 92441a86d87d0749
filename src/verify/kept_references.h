// References of the input to files that are no part of the split.
#pragma once

#include <filesystem>
#include <functional>
#include <set>

#include "join/joining.h"
#include "sameness/compared_file.h"

namespace Kessel {

/// Gives names of other files that a split wrote as they are seen from `outdir`, or after copies
/// that it made there, the texts that they have in the input, so that what differs then does so in
/// something else. References in the input are seen from `folder`; who asks `input` gets it.
void edit_kept_references(const std::function<const Sameness::ComparedFile&()>& input,
                          const std::filesystem::path& folder, const std::filesystem::path& outdir,
                          Joining& joining);

/// The files to which kept references lead, and those that these refer to in turn, as far as they
/// can be read: paths without links.
std::set<std::filesystem::path> files_behind_kept_references(const Joining& joining);

}  // namespace Kessel
