#include "cli/run_process.h"

#include <fcntl.h>
#include <sys/personality.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace Kessel::test {

namespace {

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

/// What the new process does before the command takes over. Returns only when that fails.
void become(char* const* arguments, int out, int errors, const ProcessSetting& setting) {
  const rlimit limit = {setting.most_cpu_seconds, setting.most_cpu_seconds};
  ::setrlimit(RLIMIT_CPU, &limit);
  const auto persona = static_cast<unsigned>(::personality(0xFFFFFFFF));
  constexpr unsigned FIXED = ADDR_NO_RANDOMIZE;
  ::personality(setting.random_addresses ? persona & ~FIXED : persona | FIXED);
  ::dup2(out, STDOUT_FILENO);
  ::dup2(errors, STDERR_FILENO);
  ::execv(arguments[0], arguments);
}

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
  const pid_t child = ::fork();
  if (child == 0) {
    become(pointers.data(), target, errors.descriptor(), setting);
    ::_exit(127);
  }
  if (target != out.descriptor()) ::close(target);
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) throw std::runtime_error("no process");
  return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), out.text(), errors.text()};
}

}  // namespace Kessel::test
