// Where a command's input comes from: a file, a pipe, or standard input.
#include "system/input.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace Velkstep {

namespace {

[[noreturn]] void throw_reason(std::string_view what, int error) {
  throw std::runtime_error(std::string(what) + std::system_category().message(error));
}

/// A temporary file without a name. No signal can end the process while it still has one.
Descriptor open_unnamed_file() {
  std::error_code no_folder;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(no_folder);
  if (no_folder) throw_reason("no temporary file: ", no_folder.value());
  std::string name = (folder / "velkstep-XXXXXX").string();
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::sigprocmask(SIG_SETMASK, &all, &before);
  Descriptor file(::mkostemp(name.data(), O_CLOEXEC));
  const int error = errno;
  if (file.number() >= 0) ::unlink(name.c_str());
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  if (file.number() < 0) throw_reason("no temporary file: ", error);
  return file;
}

/// Copies what is left of `from`. Calls that a signal interrupts are made again.
void copy_all(int from, int to) {
  std::array<char, std::size_t{64} * 1024> buffer;
  for (;;) {
    const ssize_t count = ::read(from, buffer.data(), buffer.size());
    if (count == 0) return;
    if (count < 0 && errno != EINTR) throw_reason("", errno);
    for (ssize_t done = 0; done < count;) {
      const auto left = static_cast<std::size_t>(count - done);
      const ssize_t written = ::write(to, buffer.data() + done, left);
      if (written < 0 && errno != EINTR) throw_reason("temporary file: ", errno);
      if (written > 0) done += written;
    }
  }
}

}  // namespace

bool is_readable_once(const std::string& argument) {
  std::error_code error;
  return argument == "-" || std::filesystem::is_fifo(argument, error);
}

void Input::spool(int source) {
  spool_ = open_unnamed_file();
  copy_all(source, spool_.number());
  path_ = "/proc/self/fd/" + std::to_string(spool_.number());
}

Input::Input(const std::string& argument) : path_(argument) {
  using std::filesystem::file_type;
  if (argument == "-") {
    spool(STDIN_FILENO);
    return;
  }
  std::error_code error;
  const file_type type = std::filesystem::status(path_, error).type();
  if (type == file_type::none || type == file_type::not_found) throw_reason("", error.value());
  if (type == file_type::directory) throw std::runtime_error("is a folder");
  if (type != file_type::regular && type != file_type::fifo) {
    throw std::runtime_error("is neither a file nor a pipe");
  }
  const Descriptor file(::open(path_.c_str(), O_RDONLY | O_CLOEXEC));
  if (file.number() < 0) throw_reason("", errno);
  if (type == file_type::fifo) spool(file.number());
}

}  // namespace Velkstep
