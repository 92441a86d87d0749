// What a folder holds, for comparisons.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace Kessel::test {

/// Every entry below a folder, by relative path: the text of files, time stamps replaced as by
/// `without_time_stamps`, and hashes of files by "<hash>"; "->target" of links; "/" of folders.
using FolderTree = std::map<std::string, std::string>;

/// What `folder` holds; fails the test when a file in it cannot be read.
FolderTree tree_of(const std::filesystem::path& folder);

/// The entries that one of the two has and the other has not, or has otherwise.
std::set<std::string> differences(const FolderTree& a, const FolderTree& b);

/// The names of what is in `folder` itself.
std::set<std::string> names_in(const std::filesystem::path& folder);

}  // namespace Kessel::test
