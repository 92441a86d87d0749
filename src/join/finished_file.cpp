#include "join/finished_file.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "kessel/errors.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// So many names are tried, should something be there already.
constexpr int MOST_NAMES = 100;

/// Makes an empty file that was not there. Returns 0 or why not.
int make_fresh(const fs::path& path) {
  errno = 0;
  std::FILE* const file = std::fopen(path.string().c_str(), "wbx");
  if (file == nullptr) return errno != 0 ? errno : EIO;
  std::fclose(file);
  return 0;
}

}  // namespace

FinishedFile::FinishedFile(const fs::path& path, bool replace) : path_(path), replace_(replace) {
  refuse_what_is_there();
  int error = EEXIST;
  for (int i = 0; error == EEXIST && i < MOST_NAMES; ++i) {
    const fs::path fresh = path_.parent_path() / (".velkstep-" + std::to_string(i) + ".tmp");
    error = make_fresh(fresh);
    if (error == 0) fresh_ = fresh;
  }
  if (error != 0) fail(error);
  errno = 0;
  stream_.open(fresh_, std::ios::out | std::ios::binary | std::ios::trunc);
  if (!stream_) {
    error = errno;
    std::error_code ignored;
    fs::remove(fresh_, ignored);
    fail(error);
  }
}

FinishedFile::~FinishedFile() {
  if (fresh_.empty()) return;
  stream_.close();
  std::error_code ignored;
  fs::remove(fresh_, ignored);
}

std::uint64_t FinishedFile::finish() {
  if (stream_) errno = 0;
  const auto size = static_cast<std::uint64_t>(stream_.tellp());
  stream_.close();
  if (!stream_) fail(errno);
  refuse_what_is_there();
  std::error_code error;
  if (!replace_) {
    // A second name for the file, since that is never put over another one; not every system of
    // files can do that.
    fs::create_hard_link(fresh_, path_, error);
    if (!error) return size;  // The first name goes with the object.
    if (error == std::errc::file_exists) throw OutputError(path_, error);
  }
  fs::rename(fresh_, path_, error);
  if (error) throw OutputError(path_, error);
  fresh_.clear();
  return size;
}

void FinishedFile::refuse_what_is_there() const {
  std::error_code error;
  const fs::file_type there = fs::symlink_status(path_, error).type();
  if (there == fs::file_type::not_found) return;
  // What cannot be looked at, since a name is too long or a folder is closed, cannot be written.
  if (there == fs::file_type::none) throw OutputError(path_, error);
  if (there == fs::file_type::directory) {
    throw OutputError(path_, std::make_error_code(std::errc::is_a_directory));
  }
  if (!replace_) throw OutputError(path_, std::make_error_code(std::errc::file_exists));
}

void FinishedFile::fail(int error) const {
  throw OutputError(path_, std::error_code(error != 0 ? error : EIO, std::generic_category()));
}

}  // namespace Kessel
