#include "support/folder_tree.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "support/scratch_folder.h"

namespace Kessel::test {

namespace fs = std::filesystem;

namespace {

/// The hash of a file depends on the time stamp in it.
std::string without_hashes(std::string text) {
  const std::string member = "\"hash\": \"";
  for (std::size_t at = 0; (at = text.find(member, at)) != std::string::npos;) {
    at += member.size();
    if (text.find('"', at) == at + 16) text.replace(at, 16, "<hash>");
  }
  return text;
}

}  // namespace

FolderTree tree_of(const fs::path& folder) {
  FolderTree tree;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    std::string& what = tree[entry.path().lexically_relative(folder).string()];
    if (entry.is_symlink()) {
      what = "->" + fs::read_symlink(entry.path()).string();
    } else {
      what =
          entry.is_directory() ? "/" : without_hashes(without_time_stamps(read_file(entry.path())));
    }
  }
  return tree;
}

std::set<std::string> differences(const FolderTree& a, const FolderTree& b) {
  std::vector<FolderTree::value_type> different;
  std::set_symmetric_difference(a.begin(), a.end(), b.begin(), b.end(),
                                std::back_inserter(different));
  std::set<std::string> names;
  for (const auto& [name, what] : different) names.insert(name);
  return names;
}

std::set<std::string> names_in(const fs::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

}  // namespace Kessel::test
