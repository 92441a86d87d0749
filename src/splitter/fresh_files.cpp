// Makes sure that a run writes over nothing.
#include "splitter/fresh_files.h"

#include <system_error>

#include "kessel/errors.h"
#include "splitter/root_list.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// What is there under `path`, a link as itself.
fs::file_type look_at(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(path, error);
  // What cannot be looked at, since a name is too long or a folder is closed, cannot be written.
  if (status.type() == fs::file_type::none) throw OutputError(path, error);
  return status.type();
}

[[noreturn]] void refuse(const fs::path& path, fs::file_type there) {
  throw OutputError(
      path, std::make_error_code(there == fs::file_type::directory ? std::errc::is_a_directory
                                                                   : std::errc::file_exists));
}

}  // namespace

void require_fresh_file(const fs::path& path) {
  const fs::file_type there = look_at(path);
  if (there != fs::file_type::not_found) refuse(path, there);
}

void require_fresh_root_list(const fs::path& in) {
  const fs::file_type there = look_at(ROOT_LIST);
  if (there == fs::file_type::not_found) return;
  std::error_code ignored;  // What cannot be compared is not the same.
  if (there != fs::file_type::regular || fs::equivalent(in, ROOT_LIST, ignored)) {
    refuse(ROOT_LIST, there);
  }
}

void require_fresh_files(const Store& file, const fs::path& in, const fs::path& outdir) {
  for (const Part* part : file.parts) {
    if (part->path.empty()) continue;
    require_fresh_file(outdir / part->path);
  }
  if (file.root != nullptr) require_fresh_root_list(in);
}

}  // namespace Kessel
