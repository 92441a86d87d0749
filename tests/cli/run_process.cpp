#include "cli/run_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <signal.h>
#include <sys/personality.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>

namespace Kessel::test {

namespace {

/// Ends the tests before the first of them where there is no command that they could run.
class CommandIsBuilt final : public testing::Environment {
  void SetUp() override {
    if (::access(VELKSTEP_COMMAND, X_OK) == 0) return;
    FAIL() << VELKSTEP_COMMAND << ": " << std::strerror(errno)
           << ". These tests run the command: build the target velkstep first.";
  }
};
[[maybe_unused]] const testing::Environment* const _command_is_built =
    testing::AddGlobalTestEnvironment(new CommandIsBuilt);

/// A file without a name that takes what a process prints.
class Printed {
 public:
  Printed() : file_(std::tmpfile(), &std::fclose) {
    if (file_ == nullptr) throw std::runtime_error("no temporary file");
  }
  int descriptor() const { return ::fileno(file_.get()); }
  std::string text() const {
    std::string all;
    std::rewind(file_.get());
    for (int c = std::fgetc(file_.get()); c != EOF; c = std::fgetc(file_.get())) {
      all += static_cast<char>(c);
    }
    return all;
  }

 private:
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

/// Limits a resource of this process, unless `most` is 0.
void limit(__rlimit_resource resource, rlim_t most) {
  const rlimit limits = {most, most};
  if (most != 0) ::setrlimit(resource, &limits);
}

/// What the new process does before the command takes over. Returns only when that fails.
void become(char* const* arguments, int out, int errors, const ProcessSetting& setting) {
  const auto persona = static_cast<unsigned>(::personality(0xFFFFFFFF));
  constexpr unsigned FIXED = ADDR_NO_RANDOMIZE;
  ::personality(setting.random_addresses ? persona & ~FIXED : persona | FIXED);
  for (const auto& [name, value] : setting.environment) {
    ::setenv(name.c_str(), value.c_str(), 1);
  }
  const char* in = setting.standard_input.empty() ? "/dev/null" : setting.standard_input.c_str();
  ::dup2(::open(in, O_RDONLY), STDIN_FILENO);
  ::dup2(out, STDOUT_FILENO);
  ::dup2(errors, STDERR_FILENO);
  ::closefrom(STDERR_FILENO + 1);
  limit(RLIMIT_CPU, setting.most_cpu_seconds);
  limit(RLIMIT_STACK, setting.most_stack);
  limit(RLIMIT_AS, setting.most_memory);
  limit(RLIMIT_FSIZE, setting.most_file_bytes);
  limit(RLIMIT_NOFILE, setting.most_files);
  if (setting.minds_permissions) {
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
  }
  if (setting.killed_before_call != 0 && ::ptrace(PTRACE_TRACEME) != 0) return;
  ::execv(arguments[0], arguments);
}

/// Waits for the end of a process and returns its status as the system's wait() gives it.
int wait_for_end(pid_t child) {
  int status = 0;
  if (::waitpid(child, &status, 0) != child) throw std::runtime_error("no process");
  return status;
}

/// The same for a process that is traced, which stops where the command takes over, and before and
/// behind each system call: kills it before the call of that number. Calls for random numbers do
/// not count, since the system's library makes another where it does not like one.
int kill_before_call(pid_t child, unsigned number) {
  int status = wait_for_end(child);
  ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
  for (unsigned calls = 0; WIFSTOPPED(status) && calls < number;) {
    ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    status = wait_for_end(child);
    __ptrace_syscall_info call = {};
    if (!WIFSTOPPED(status)) break;
    ::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof call, &call);
    if (call.op == PTRACE_SYSCALL_INFO_ENTRY && call.entry.nr != SYS_getrandom) ++calls;
  }
  if (!WIFSTOPPED(status)) return status;
  ::kill(child, SIGKILL);
  return wait_for_end(child);
}

/// A terminal without a screen: what is printed to one end can be read at the other, as it is.
class Terminal {
 public:
  Terminal() : screen_(::posix_openpt(O_RDWR | O_NOCTTY)) {
    if (screen_ < 0 || ::grantpt(screen_) != 0 || ::unlockpt(screen_) != 0) {
      throw std::runtime_error("no terminal");
    }
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() { ::close(screen_); }

  /// The end to print to, which is the caller's to close.
  int open_line() const {
    const int line = ::open(::ptsname(screen_), O_RDWR | O_NOCTTY);
    termios settings = {};
    ::tcgetattr(line, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(line, TCSANOW, &settings);
    return line;
  }
  /// What is printed until everyone has closed the other end.
  std::string text() const {
    std::string all;
    char buffer[4096];
    for (ssize_t count = 0; (count = ::read(screen_, buffer, sizeof buffer)) > 0;) {
      all.append(buffer, static_cast<std::size_t>(count));
    }
    return all;
  }

 private:
  int screen_;
};

}  // namespace

ProcessRun run_velkstep(const std::vector<std::string>& arguments, const ProcessSetting& setting) {
  std::vector<std::string> words = {VELKSTEP_COMMAND};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  const Printed out;
  const Printed errors;
  int target = out.descriptor();
  if (!setting.standard_output.empty()) {
    target = ::open(setting.standard_output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (target < 0) throw std::runtime_error("cannot open " + setting.standard_output);
  }
  std::optional<Terminal> terminal;
  if (setting.terminal) target = terminal.emplace().open_line();
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    become(pointers.data(), target, errors.descriptor(), setting);
    ::_exit(127);
  }
  if (target != out.descriptor()) ::close(target);
  if (setting.signal != 0) {
    std::this_thread::sleep_for(setting.signal_after);
    ::kill(child, setting.signal);
  }
  const std::string shown = terminal ? terminal->text() : std::string();
  const unsigned call = setting.killed_before_call;
  const int status = call == 0 ? wait_for_end(child) : kill_before_call(child, call);
  return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), shown + out.text(),
          errors.text()};
}

std::vector<ProcessRun> run_side_by_side(const std::vector<std::vector<std::string>>& runs) {
  std::vector<std::future<ProcessRun>> running;
  for (const auto& arguments : runs) {
    running.push_back(
        std::async(std::launch::async, [&arguments] { return run_velkstep(arguments); }));
  }
  std::vector<ProcessRun> ended;
  for (auto& run : running) ended.push_back(run.get());
  return ended;
}

}  // namespace Kessel::test
