// Folders that are made for something that may fail.
#pragma once

#include <filesystem>
#include <vector>

namespace Velkstep {

/// Folders that were made, and go again unless they are kept.
class NewFolders {
 public:
  NewFolders() = default;
  NewFolders(const NewFolders&) = delete;
  NewFolders& operator=(const NewFolders&) = delete;
  /// Removes those that are empty, the last one first.
  ~NewFolders();

  /// Makes `folder`, whose parent is there; false, with the reason in `errno`, where it cannot be.
  bool make(const std::filesystem::path& folder);
  void keep() { made_.clear(); }

 private:
  std::vector<std::filesystem::path> made_;
};

}  // namespace Velkstep
