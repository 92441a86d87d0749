// A folder for files that nobody is to keep.
#pragma once

#include <filesystem>

namespace Velkstep {

/// A fresh folder where the system has its temporary files, which goes with all that is in it.
class TemporaryFolder {
 public:
  /// Throws `std::system_error` where there can be none.
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace Velkstep
