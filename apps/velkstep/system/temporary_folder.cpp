#include "system/temporary_folder.h"

#include <stdlib.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace Velkstep {

TemporaryFolder::TemporaryFolder() {
  std::string path = (std::filesystem::temp_directory_path() / "velkstep-XXXXXX").string();
  if (::mkdtemp(path.data()) == nullptr) {
    throw std::system_error(errno, std::system_category(), "no temporary folder");
  }
  path_ = path;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

}  // namespace Velkstep
