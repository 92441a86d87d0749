// Where a command's input comes from: a file, a pipe, or standard input.
#include "system/input.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "kessel/errors.h"
#include "system/archive.h"
#include "system/temporary_folder.h"
#include "system/write_all.h"

namespace Velkstep {

namespace {

/// As the library refuses what it cannot open.
[[noreturn]] void refuse_as_unreadable(const std::string& reason) {
  Kessel::Finding finding;
  finding.kind = Kessel::FindingKind::unreadable;
  finding.severity = Kessel::Severity::error;
  finding.sentence = "The file " + reason + ".";
  throw Kessel::InputError(finding);
}

[[noreturn]] void refuse_to_open(int error) {
  refuse_as_unreadable("cannot be opened: " + std::system_category().message(error));
}

/// A temporary file without a name. No signal can end the process while it still has one.
Descriptor open_unnamed_file() {
  const std::filesystem::path folder = folder_for_temporary_files();
  std::string name = (folder / "velkstep-XXXXXX").string();
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::sigprocmask(SIG_SETMASK, &all, &before);
  Descriptor file(::mkostemp(name.data(), O_CLOEXEC));
  const int error = errno;
  if (file.number() >= 0) ::unlink(name.c_str());
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  if (file.number() < 0) throw_nothing_temporary(folder, error);
  return file;
}

/// Copies what is left of `from`. Calls that a signal interrupts are made again.
void copy_all(int from, int to) {
  std::array<char, std::size_t{64} * 1024> buffer;
  for (;;) {
    const ssize_t count = ::read(from, buffer.data(), buffer.size());
    if (count == 0) return;
    if (count < 0 && errno != EINTR) {
      refuse_as_unreadable("cannot be read: " + std::system_category().message(errno));
    }
    if (count > 0) write_all(to, {buffer.data(), static_cast<std::size_t>(count)});
  }
}

/// Whether a file that can be sought in is compressed.
bool holds_compressed(int file) {
  std::array<char, COMPRESSED_HEAD> head;
  const ssize_t count = ::pread(file, head.data(), head.size(), 0);
  return count > 0 && is_compressed({head.data(), static_cast<std::size_t>(count)});
}

}  // namespace

bool needs_a_copy(const std::string& argument) {
  std::error_code error;
  if (argument == "-" || std::filesystem::is_fifo(argument, error)) return true;
  if (!std::filesystem::is_regular_file(argument, error)) return false;
  const Descriptor file(::open(argument.c_str(), O_RDONLY | O_CLOEXEC));
  return file.number() >= 0 && holds_compressed(file.number());
}

void Input::read_from(Descriptor copy) {
  copy_ = std::move(copy);
  path_ = "/proc/self/fd/" + std::to_string(copy_.number());
}

void Input::spool(int source) {
  Descriptor copy = open_unnamed_file();
  copy_all(source, copy.number());
  read_from(std::move(copy));
  unpack_if_compressed(copy_.number());
}

void Input::unpack_if_compressed(int file) {
  if (!holds_compressed(file)) return;
  Descriptor unpacked = open_unnamed_file();
  unpack(file, unpacked.number());
  read_from(std::move(unpacked));
}

Input::Input(const std::string& argument) : path_(argument) {
  using std::filesystem::file_type;
  if (argument == "-") {
    spool(STDIN_FILENO);
    return;
  }
  std::error_code error;
  const file_type type = std::filesystem::status(path_, error).type();
  if (type == file_type::none || type == file_type::not_found) refuse_to_open(error.value());
  if (type == file_type::directory) refuse_as_unreadable("is a folder");
  if (type != file_type::regular && type != file_type::fifo) {
    refuse_as_unreadable("is neither a file nor a pipe");
  }
  const Descriptor file(::open(path_.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.number() < 0) refuse_to_open(errno);
  if (type == file_type::fifo) {
    spool(file.number());
  } else {
    unpack_if_compressed(file.number());
  }
}

}  // namespace Velkstep
