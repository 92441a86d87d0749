// A folder that is there, and goes again where nothing comes of it.
#pragma once

#include <filesystem>
#include <vector>

namespace Kessel {

/// Makes a folder, and those above it, as needed. What it made goes with it, as far as it is empty
/// then.
class FreshFolder {
 public:
  /// Throws OutputError where it cannot be made.
  explicit FreshFolder(const std::filesystem::path& folder);
  FreshFolder(const FreshFolder&) = delete;
  FreshFolder& operator=(const FreshFolder&) = delete;
  ~FreshFolder();

 private:
  std::vector<std::filesystem::path> made_;  // the innermost first
};

}  // namespace Kessel
