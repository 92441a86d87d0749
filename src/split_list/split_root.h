// Which file of a finished split is the root's.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Kessel {

/// The file beside a split that holds its root file's name, alone in the first line.
inline constexpr const char* ROOT_LIST = "roots.txt";

/// The name that ROOT_LIST in `folder` holds; nothing where it is not there, and an empty one where
/// it is not to be read.
std::optional<std::string> read_root_list(const std::filesystem::path& folder);

/// The path of the root's file of the split in `folder`: what the list of the split says or, where
/// there is none, ROOT_LIST. Throws InputError where neither names a file that is there.
std::filesystem::path root_of_split(const std::filesystem::path& folder);

}  // namespace Kessel
