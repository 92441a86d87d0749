// Moves finished files by renaming, and undoes it when something goes wrong.
#include "system/staged_output.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>

#include "system/interruption.h"
#include "system/write_advice.h"

namespace Velkstep {

namespace {

namespace fs = std::filesystem;

/// Reading a folder takes tens of kilobytes. So large a block goes back to the system at once.
constexpr std::size_t MEMORY_TO_REMOVE = 512 << 10;

UnusableOutput failure(const fs::path& path, const std::string& what) {
  return UnusableOutput(path, what);
}

/// What the system says, and what can be done.
std::string reason(int error) {
  return reason_with_advice({error, std::system_category()});
}

std::optional<struct stat> status_of(const fs::path& path) {
  struct stat status = {};
  if (::lstat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

bool is_folder(const struct stat& status) {
  return S_ISDIR(status.st_mode);
}

mode_t mode_of_new_folders() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0777 & ~mask;
}

/// Makes a fresh folder whose path begins with `prefix`; empty where it cannot be.
fs::path make_fresh_folder(const fs::path& prefix) {
  std::string path = prefix.string() + "XXXXXX";
  if (::mkdtemp(path.data()) == nullptr) return {};
  try {
    return path;
  } catch (...) {
    ::rmdir(path.c_str());
    throw;
  }
}

/// The absolute path of a folder that may not be there yet, links resolved, without "/" at its end.
fs::path resolved(const fs::path& outdir) {
  if (outdir.empty()) throw failure(outdir, "cannot be created: " + reason(ENOENT));
  std::error_code error;
  fs::path path = fs::weakly_canonical(fs::absolute(outdir), error);
  if (error) throw failure(outdir, "cannot be created: " + reason_with_advice(error));
  path = path.lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

/// Makes the folder and those above it.
void make_folders(const fs::path& folder, const fs::path& shown, NewFolders& made) {
  std::error_code error;
  if (fs::is_directory(folder, error)) return;
  if (folder.has_relative_path()) make_folders(folder.parent_path(), shown, made);
  if (!made.make(folder) && (errno != EEXIST || !fs::is_directory(folder, error))) {
    const int code = errno == EEXIST ? ENOTDIR : errno;
    throw failure(shown, "cannot be created: " + reason(code));
  }
}

/// Whether the folder says more about who may use it than its owner, group and mode.
bool has_access_lists(const fs::path& folder) {
  return ::getxattr(folder.c_str(), "system.posix_acl_access", nullptr, 0) >= 0 ||
         ::getxattr(folder.c_str(), "system.posix_acl_default", nullptr, 0) >= 0;
}

bool is_working_directory(const struct stat& folder) {
  struct stat here = {};
  return ::stat(".", &here) == 0 && here.st_dev == folder.st_dev && here.st_ino == folder.st_ino;
}

/// Opens `folder` and locks it for this process; false where another has locked it. Where folders
/// cannot be locked, nothing is.
bool try_to_lock(const fs::path& folder, Descriptor& lock) {
  lock = Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return ::flock(lock.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace

void refuse_what_is_there(const fs::path& outdir, const std::vector<std::string>& names,
                          bool replace) {
  for (const std::string& name : names) {
    const auto there = status_of(outdir / name);
    if (!there) continue;
    if (is_folder(*there))
      throw failure(outdir / name, "is a folder; remove it, or name another place");
    if (!replace) throw failure(outdir / name, "is there already; --force replaces it");
    if (!S_ISREG(there->st_mode) && !S_ISLNK(there->st_mode)) {
      throw failure(outdir / name, "is no file; remove it, or name another place");
    }
  }
}

StagedOutput::StagedOutput(const fs::path& outdir)
    : reserve_(new char[MEMORY_TO_REMOVE]), shown_(outdir), outdir_(resolved(outdir)) {
  const auto there = status_of(outdir_);
  if (there && !is_folder(*there)) throw failure(shown_, "cannot be created: " + reason(ENOTDIR));
  if (there && ::faccessat(AT_FDCWD, outdir_.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    throw failure(shown_, "cannot be written to: " + reason(errno));
  }
  const fs::path above = outdir_.parent_path();
  make_folders(above, shown_, above_);

  const auto device = status_of(above);
  if (!there || (device && device->st_dev == there->st_dev)) {
    folder_ = make_fresh_folder(above / ("." + outdir_.filename().string() + ".velkstep-"));
    if (folder_.empty() && errno == ENAMETOOLONG) folder_ = make_fresh_folder(above / ".velkstep-");
  }
  if (folder_.empty() && there) folder_ = make_fresh_folder(outdir_ / ".velkstep-");
  if (folder_.empty()) throw failure(shown_, "cannot be written to: " + reason(errno));
}

StagedOutput::~StagedOutput() {
  reserve_.reset();
  if (!kept_) {
    ::mkdir(folder_.c_str(), 0700);  // It may have become the output folder.
    moves_.take_back();
    if (is_outdir_new_) ::rmdir(outdir_.c_str());
  }
  std::error_code error;
  fs::remove_all(folder_, error);
}

void StagedOutput::publish(const std::vector<std::string>& names, bool replace,
                           const std::function<Leftovers()>& find_leftovers) {
  throw_if_interrupted();
  refuse_what_is_there(shown_, names, replace);
  if (publish_as_folder(names)) return;
  lock_outdir();
  refuse_what_is_there(shown_, names, replace);
  publish_one_by_one(names, find_leftovers ? find_leftovers() : Leftovers());
}

void StagedOutput::keep() {
  kept_ = true;
  above_.keep();
}

/// Until the files are in place and kept, no other process publishes in the output folder.
void StagedOutput::lock_outdir() {
  if (lock_.number() >= 0) return;
  struct stat locked = {};
  const bool mine = try_to_lock(outdir_, lock_);
  const auto there = status_of(outdir_);
  const bool replaced =
      ::fstat(lock_.number(), &locked) == 0 &&
      (!there || there->st_dev != locked.st_dev || there->st_ino != locked.st_ino);
  if (!mine || replaced)
    throw failure(shown_, "another process is writing into it; wait, or name another folder");
}

/// A folder that is new or empty is replaced as a whole, if nobody else notices.
bool StagedOutput::publish_as_folder(const std::vector<std::string>& names) {
  Moves::Paths paths;
  for (const std::string& name : names) paths.emplace_back(folder_ / name, outdir_ / name);
  const bool replaced = replace_outdir();
  if (replaced) moves_.add(std::move(paths));
  return replaced;
}

bool StagedOutput::replace_outdir() {
  const auto own = status_of(folder_);
  if (!own) return false;
  try_to_lock(folder_, lock_of_new_);
  const auto there = status_of(outdir_);
  if (!there) {
    ::chmod(folder_.c_str(), mode_of_new_folders() | (own->st_mode & S_ISGID));
    is_outdir_new_ = rename_to_new(folder_, outdir_);
    if (is_outdir_new_ || errno == EEXIST) return is_outdir_new_;
    throw failure(shown_, "cannot be created: " + reason(errno));
  }
  if (own->st_uid != there->st_uid || own->st_gid != there->st_gid || !is_folder(*there) ||
      has_access_lists(outdir_) || is_working_directory(*there)) {
    return false;
  }
  lock_outdir();
  if (::chmod(folder_.c_str(), there->st_mode & 07777) == 0 &&
      ::rename(folder_.c_str(), outdir_.c_str()) == 0) {
    return true;
  }
  ::chmod(folder_.c_str(), own->st_mode & 07777);
  return false;
}

void StagedOutput::publish_one_by_one(const std::vector<std::string>& names,
                                      const Leftovers& leftovers) {
  const fs::path replaced = folder_ / ".replaced";
  if (::mkdir(replaced.c_str(), 0700) != 0) {
    throw failure(shown_, "cannot be written to: " + reason(errno));
  }
  const auto move = [&](const fs::path& from, const fs::path& to, const std::string& name) {
    throw_if_interrupted();
    if (!moves_.move(from, to)) throw failure(shown_ / name, reason(errno));
  };
  // From back to front, so that a file that says that all are there is the first to go; but one
  // that says it of the leftovers goes before it.
  std::vector<std::string> going(names.rbegin(), names.rend());
  going.insert(going.end(), leftovers.names.begin(), leftovers.names.end());
  std::stable_partition(going.begin(), going.end(),
                        [&](const std::string& name) { return name == leftovers.first; });
  for (const std::string& name : going) {
    if (status_of(outdir_ / name)) move(outdir_ / name, replaced / name, name);
  }
  for (const std::string& name : names) move(folder_ / name, outdir_ / name, name);
}

}  // namespace Velkstep
