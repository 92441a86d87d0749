// A folder for files that nobody is to keep.
#pragma once

#include <filesystem>

namespace Velkstep {

/// The system's folder for temporary files. Throws `std::runtime_error`, which says what to do,
/// where there is none.
std::filesystem::path folder_for_temporary_files();

/// Throws it for a file or folder that cannot be made there, with the system's reason.
[[noreturn]] void throw_nothing_temporary(const std::filesystem::path& folder, int error);

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
