// A file of a name that nobody else has.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace Kessel {

/// A file that was not there before, under a name that begins with a dot. Its end removes it; a
/// process that is killed leaves it behind.
class FreshFile {
 public:
  /// Makes it in `folder`; error() says if that cannot be.
  explicit FreshFile(const std::filesystem::path& folder);
  FreshFile(const FreshFile&) = delete;
  FreshFile& operator=(const FreshFile&) = delete;
  ~FreshFile();

  const std::filesystem::path& path() const { return path_; }
  std::ostream& stream() { return stream_; }
  /// Leaves the writing to others, who open the file by its path.
  void hand_over() { stream_.close(); }

  /// Ends the writing.
  void close();
  /// Why it cannot be written, or was not written whole; none where it was.
  std::error_code error() const { return error_; }
  /// Its size in bytes; after close().
  std::uint64_t size() const { return size_; }

  /// It has another name by now; nothing is removed.
  void release() { path_.clear(); }

 private:
  std::filesystem::path path_;
  std::ofstream stream_;
  std::error_code error_;
  std::uint64_t size_ = 0;
};

}  // namespace Kessel
