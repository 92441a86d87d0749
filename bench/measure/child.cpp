// Child processes and their resource usage.
#include "measure/child.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace Kessel::bench {

namespace {

double seconds_of(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// The child's side: becomes the program, or ends with the exit code of a shell that cannot.
[[noreturn]] void become(char* const* arguments, const char* folder, const char* output) {
  const int descriptor = ::open(output, O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (descriptor >= 0 && ::dup2(descriptor, STDOUT_FILENO) >= 0 && ::chdir(folder) == 0) {
    ::execv(arguments[0], arguments);
  }
  ::_exit(127);
}

}  // namespace

Cost run_child(const std::vector<std::string>& command, const std::filesystem::path& folder,
               const std::filesystem::path& output) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const std::filesystem::path sink =
      output.empty() ? "/dev/null" : std::filesystem::absolute(output);

  const auto before = std::chrono::steady_clock::now();
  const pid_t child = ::fork();
  if (child == 0) become(arguments.data(), folder.c_str(), sink.c_str());
  if (child < 0) throw std::runtime_error("cannot start a process");
  int status = 0;
  rusage usage = {};
  while (::wait4(child, &status, 0, &usage) < 0) {
    if (errno != EINTR) throw std::runtime_error("cannot wait for a process");
  }
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - before;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::string text = "failed:";
    for (const std::string& word : command) text += " " + word;
    throw std::runtime_error(text);
  }
  return {elapsed.count(), seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime),
          static_cast<std::uint64_t>(usage.ru_maxrss) * 1024};
}

std::filesystem::path find_on_path(const std::string& name) {
  const char* path = std::getenv("PATH");
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::filesystem::path candidate = std::filesystem::path(folder) / name;
    if (!folder.empty() && ::access(candidate.c_str(), X_OK) == 0) return candidate;
  }
  return {};
}

}  // namespace Kessel::bench
