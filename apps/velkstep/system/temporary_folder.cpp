#include "system/temporary_folder.h"

#include <stdlib.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace Velkstep {

namespace {

/// Where the system wants temporary files, whether there is such a folder or not.
std::filesystem::path wanted_folder() {
  for (const char* name : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
    if (const char* const value = ::getenv(name)) return value;
  }
  return "/tmp";
}

}  // namespace

void throw_nothing_temporary(const std::filesystem::path& folder, int error) {
  throw std::runtime_error("no temporary file in " + folder.string() + ": " +
                           std::system_category().message(error) +
                           "; TMPDIR names another folder for it");
}

std::filesystem::path folder_for_temporary_files() {
  std::error_code error;
  std::filesystem::path folder = std::filesystem::temp_directory_path(error);
  if (error) throw_nothing_temporary(wanted_folder(), error.value());
  return folder;
}

TemporaryFolder::TemporaryFolder() {
  const std::filesystem::path folder = folder_for_temporary_files();
  std::string path = (folder / "velkstep-XXXXXX").string();
  if (::mkdtemp(path.data()) == nullptr) throw_nothing_temporary(folder, errno);
  path_ = path;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

}  // namespace Velkstep
