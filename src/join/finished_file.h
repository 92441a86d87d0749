// A file that appears when it is finished, or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>

namespace Kessel {

/// A fresh file beside another, under a name that begins with a dot, which takes that one's name at
/// the end. Until then its end removes it; a process that is killed leaves it behind.
class FinishedFile {
 public:
  /// Makes the fresh file. Throws OutputError where it cannot be made, or where there is something
  /// at `path` and `replace` is not set, or a folder.
  FinishedFile(const std::filesystem::path& path, bool replace);
  FinishedFile(const FinishedFile&) = delete;
  FinishedFile& operator=(const FinishedFile&) = delete;
  ~FinishedFile();

  std::ostream& stream() { return stream_; }

  /// Closes the file and moves it to its place. Throws OutputError where it was not written whole,
  /// or, without `replace`, where there is something by now. Returns its size in bytes.
  std::uint64_t finish();

 private:
  void refuse_what_is_there() const;
  [[noreturn]] void fail(int error) const;

  std::filesystem::path path_;
  std::filesystem::path fresh_;
  std::ofstream stream_;
  bool replace_;
};

}  // namespace Kessel
