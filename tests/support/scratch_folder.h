// A folder of its own for one test, and files in it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Kessel::test {

/// A fresh empty folder that is the process's working directory while the object lives; both are
/// undone at the end.
class ScratchFolder {
 public:
  ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder();

  /// The absolute path of `name` in the folder.
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }
  const std::filesystem::path& path() const { return path_; }

  /// Writes `text` into the file `name` and returns its absolute path.
  std::filesystem::path write(std::string_view name, std::string_view text) const;

 private:
  std::filesystem::path path_;
  std::filesystem::path before_;
};

/// The whole of a file, as bytes; fails the test when it cannot be read.
std::string read_file(const std::filesystem::path& path);

/// `text` with every time stamp of the form 2026-11-16T02:45:07+00:00 replaced by "<time>".
std::string without_time_stamps(std::string text);

/// The folder with real assemblies, or an empty path when it is not there.
std::filesystem::path samples_folder();

/// Why a test that wants a real assembly does not have it.
std::string why_no_sample();

}  // namespace Kessel::test
