#include "system/job_processes.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <map>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "system/descriptor.h"
#include "system/interruption.h"

namespace Velkstep {

namespace {

/// A file in memory that takes what a process prints.
class Print {
 public:
  explicit Print(std::size_t job) : file_(::memfd_create("velkstep", MFD_CLOEXEC)) {
    if (file_.number() < 0) throw NotStarted(job, errno);
  }
  int number() const { return file_.number(); }

  std::string text() const {
    std::string all;
    std::array<char, std::size_t{64} * 1024> block;
    for (;;) {
      const ssize_t count =
          ::pread(number(), block.data(), block.size(), static_cast<off_t>(all.size()));
      if (count <= 0) return all;
      all.append(block.data(), static_cast<std::size_t>(count));
    }
  }

 private:
  Descriptor file_;
};

/// The process of a job. It holds one end of a pipe as long as it lives.
struct Process {
  explicit Process(std::size_t of_job) : job(of_job), out(of_job), errors(of_job) {}

  pid_t number = 0;
  std::size_t job;
  Descriptor life;
  Print out;
  Print errors;
};

/// What the new process does. It ends with the one that started it.
[[noreturn]] void become(const Jobs& jobs, const Process& process, pid_t parent) {
  int code = 1;
  try {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(code);
    ::dup2(process.out.number(), STDOUT_FILENO);
    ::dup2(process.errors.number(), STDERR_FILENO);
    stop_holding_interruptions();
    code = jobs.run(process.job);
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
  } catch (const Interrupted& interruption) {
    end_by(interruption);
  } catch (...) {
    code = 1;  // Commands say themselves what went wrong.
  }
  ::_exit(code);
}

Process start(const Jobs& jobs, std::size_t job) {
  std::array<int, 2> ends;
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw NotStarted(job, errno);
  Process process(job);
  process.life = Descriptor(ends[0]);
  const Descriptor lives(ends[1]);
  const pid_t parent = ::getpid();
  process.number = ::fork();
  if (process.number < 0) throw NotStarted(job, errno);
  if (process.number == 0) become(jobs, process, parent);
  return process;
}

/// Waits until one of the processes has ended, or the command is asked to stop. Signals come
/// through only here, so that none comes unseen between a look and a wait.
void wait_for_one(const std::vector<Process>& running) {
  std::vector<pollfd> waiting;
  for (const Process& process : running) waiting.push_back({process.life.number(), POLLIN, 0});
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::sigprocmask(SIG_BLOCK, &all, &before);
  if (!is_interrupted()) ::ppoll(waiting.data(), waiting.size(), nullptr, &before);
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  throw_if_interrupted();
}

bool has_ended(const Process& process) {
  pollfd look = {process.life.number(), POLLIN, 0};
  return ::poll(&look, 1, 0) == 1;
}

JobEnd take_end(const Process& process) {
  int status = 0;
  while (::waitpid(process.number, &status, 0) < 0 && errno == EINTR) continue;
  JobEnd end;
  if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
  if (WIFEXITED(status)) end.exit_code = WEXITSTATUS(status);
  end.out = process.out.text();
  end.errors = process.errors.text();
  return end;
}

/// The processes that run, and the ends that wait for their turn.
class Crew {
 public:
  explicit Crew(const Jobs& jobs) : jobs_(jobs) {}
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;
  ~Crew() {
    for (const Process& process : running_) ::kill(process.number, SIGTERM);
    for (const Process& process : running_) take_end(process);
  }

  void work() {
    std::size_t next = 0;
    while (next < jobs_.count || !running_.empty()) {
      while (next < jobs_.count && running_.size() < jobs_.most_at_once) {
        running_.reserve(running_.size() + 1);  // A process that runs is not lost.
        running_.push_back(start(jobs_, next++));
      }
      wait_for_one(running_);
      take_ends();
      tell();
    }
  }

 private:
  void take_ends() {
    for (std::size_t i = 0; i < running_.size();) {
      if (!has_ended(running_[i])) {
        ++i;
        continue;
      }
      const Process process = std::move(running_[i]);
      running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(i));
      ends_.emplace(process.job, take_end(process));
      jobs_.progress(++done_);
    }
  }

  void tell() {
    for (auto end = ends_.begin(); end != ends_.end() && end->first == told_;) {
      jobs_.ended(told_++, end->second);
      end = ends_.erase(end);
    }
  }

  const Jobs& jobs_;
  std::vector<Process> running_;
  std::map<std::size_t, JobEnd> ends_;
  std::size_t done_ = 0;
  std::size_t told_ = 0;
};

}  // namespace

NotStarted::NotStarted(std::size_t job, int reason)
    : std::runtime_error("no process can be started for it: " +
                         std::system_category().message(reason) + "; -j 1 starts fewer at once"),
      job_(job) {}

void run_side_by_side(const Jobs& jobs) {
  hold_interruptions();
  std::cout.flush();
  Crew(jobs).work();
}

}  // namespace Velkstep
