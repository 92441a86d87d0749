#include "output/fresh_file.h"

#include <cerrno>
#include <cstdio>
#include <random>
#include <string>

namespace Kessel {

namespace {

/// So many names are tried, should something be there already.
constexpr int MOST_NAMES = 100;

std::error_code reason_of(int error) {
  return {error != 0 ? error : EIO, std::generic_category()};
}

/// Makes an empty file that was not there. Returns 0 or why not.
int make_fresh(const std::filesystem::path& path) {
  errno = 0;
  std::FILE* const file = std::fopen(path.string().c_str(), "wbx");
  if (file == nullptr) return errno != 0 ? errno : EIO;
  std::fclose(file);
  return 0;
}

}  // namespace

FreshFile::FreshFile(const std::filesystem::path& folder) {
  std::random_device random;
  int error = EEXIST;
  for (int i = 0; error == EEXIST && i < MOST_NAMES; ++i) {
    const std::filesystem::path path = folder / (".velkstep-" + std::to_string(random()) + ".tmp");
    error = make_fresh(path);
    if (error == 0) path_ = path;
  }
  if (error == 0) {
    errno = 0;
    stream_.open(path_, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!stream_) error = errno != 0 ? errno : EIO;
  }
  if (error != 0) error_ = reason_of(error);
}

FreshFile::~FreshFile() {
  if (path_.empty()) return;
  stream_.close();
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

void FreshFile::close() {
  if (!stream_.is_open()) {
    std::error_code error;
    size_ = std::filesystem::file_size(path_, error);
    if (!error_) error_ = error;
    return;
  }
  if (stream_) {
    errno = 0;
    size_ = static_cast<std::uint64_t>(stream_.tellp());
  }
  stream_.close();
  if (!stream_ && !error_) error_ = reason_of(errno);
}

}  // namespace Kessel
