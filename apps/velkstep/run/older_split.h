// What an earlier split has left in a folder into which another one goes.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "system/staged_output.h"

namespace Velkstep {

/// What stands in the list of an earlier split in a folder.
struct OlderSplit {
  /// Its files that are as it wrote them and of which the new split writes none, and the lists
  /// beside them.
  Leftovers leftovers;
  /// The names of those that the new split does not write either, but that are not as they were.
  std::vector<std::string> changed;
  /// Why its list cannot be read; then nothing else is known. Empty otherwise.
  std::string problem;
};

/// Looks for one in `folder`, into which files of the names `names` go. Its leftovers are none of
/// `inputs`, wherever those stand.
OlderSplit find_older_split(const std::filesystem::path& folder,
                            const std::vector<std::string>& names,
                            const std::vector<std::filesystem::path>& inputs);

/// A line for each thing about it that a reader should know, for standard error.
std::string older_split_text(const OlderSplit& older, const std::filesystem::path& folder);

}  // namespace Velkstep
