#include "system/moves.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>

namespace Velkstep {

namespace fs = std::filesystem;

bool rename_to_new(const fs::path& from, const fs::path& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // The file system cannot do both in one.
  struct stat there = {};
  if (::lstat(to.c_str(), &there) == 0) {
    errno = EEXIST;
    return false;
  }
  return ::rename(from.c_str(), to.c_str()) == 0;
}

bool Moves::move(const fs::path& from, const fs::path& to) {
  done_.emplace_back(from, to);
  if (rename_to_new(from, to)) return true;
  const int error = errno;
  done_.pop_back();
  errno = error;
  return false;
}

void Moves::take_back() noexcept {
  for (auto move = done_.rbegin(); move != done_.rend(); ++move) {
    rename_to_new(move->second, move->first);
  }
  done_.clear();
}

}  // namespace Velkstep
