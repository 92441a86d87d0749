#include "system/new_folders.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace Velkstep {

NewFolders::~NewFolders() {
  for (auto made = made_.rbegin(); made != made_.rend(); ++made) ::rmdir(made->c_str());
}

bool NewFolders::make(const std::filesystem::path& folder) {
  made_.push_back(folder);
  if (::mkdir(folder.c_str(), 0777) == 0) return true;
  const int error = errno;
  made_.pop_back();
  errno = error;
  return false;
}

}  // namespace Velkstep
