#include "output/finished_file.h"

#include <system_error>

#include "kessel/errors.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

void refuse_what_is_there(const fs::path& path, bool replace) {
  std::error_code error;
  const fs::file_type there = fs::symlink_status(path, error).type();
  if (there == fs::file_type::not_found) return;
  // What cannot be looked at, since a name is too long or a folder is closed, cannot be written.
  if (there == fs::file_type::none) throw OutputError(path, error);
  if (there == fs::file_type::directory) {
    throw OutputError(path, std::make_error_code(std::errc::is_a_directory));
  }
  if (!replace) throw OutputError(path, std::make_error_code(std::errc::file_exists));
  if (there != fs::file_type::regular && there != fs::file_type::symlink) {
    // A device or a pipe is there for others, too.
    throw OutputError(path, std::make_error_code(std::errc::not_supported));
  }
}

}  // namespace

FinishedFile::FinishedFile(const fs::path& path, bool replace)
    : path_(path), replace_(replace), fresh_(path.parent_path()) {
  refuse_what_is_there(path_, replace_);
  if (fresh_.error()) throw OutputError(path_, fresh_.error());
}

std::uint64_t FinishedFile::finish() {
  fresh_.close();
  if (fresh_.error()) throw OutputError(path_, fresh_.error());
  refuse_what_is_there(path_, replace_);
  std::error_code error;
  if (!replace_) {
    // A second name for the file, since that is never put over another one; not every system of
    // files can do that.
    fs::create_hard_link(fresh_.path(), path_, error);
    if (!error) return fresh_.size();  // The first name goes with the object.
    if (error == std::errc::file_exists) throw OutputError(path_, error);
  }
  fs::rename(fresh_.path(), path_, error);
  if (error) throw OutputError(path_, error);
  fresh_.release();
  return fresh_.size();
}

}  // namespace Kessel
