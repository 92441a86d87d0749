// Jobs that run side by side, each in a process of its own.
#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>

namespace Velkstep {

/// How a job ended and what it printed.
struct JobEnd {
  int exit_code = 0;
  int signal = 0;      ///< that ended its process; 0 for none
  std::string out;     ///< what it printed on standard output
  std::string errors;  ///< and on standard error
};

/// Jobs, counted from 0. A process of its own has its own statics, working directory and memory: a
/// job may do what a whole process may, and what ends one ends no other.
struct Jobs {
  std::size_t count = 0;
  std::size_t most_at_once = 1;
  /// Does a job, in its process, and returns the exit code.
  std::function<int(std::size_t job)> run;
  /// Is told of every job's end in the order of the jobs, as soon as those before have ended.
  std::function<void(std::size_t job, const JobEnd& end)> ended;
  /// Is told how many have ended, in whatever order.
  std::function<void(std::size_t done)> progress;
};

/// The system has no room for the process of a job.
class NotStarted : public std::runtime_error {
 public:
  /// `what()` says why, and what can be done.
  NotStarted(std::size_t job, int reason);
  std::size_t job() const { return job_; }

 private:
  std::size_t job_;
};

/// Runs all jobs. Forks, so the caller has no other thread. Throws `Interrupted` when the command
/// is asked to stop, and what `ended` throws; by then the processes of all jobs have been asked to
/// stop and have ended. Throws NotStarted.
void run_side_by_side(const Jobs& jobs);

}  // namespace Velkstep
