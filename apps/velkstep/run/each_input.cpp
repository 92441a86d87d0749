#include "run/each_input.h"

#include <signal.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <system_error>
#include <thread>

#include "run/exit_codes.h"
#include "run/with_input.h"
#include "run/wrong_usage.h"
#include "system/interruption.h"
#include "system/job_processes.h"
#include "system/patient_output.h"
#include "text/counted.h"

namespace Velkstep {

namespace {

/// What an exit code says about one of several inputs, from good to bad.
struct Outcome {
  int code;
  const char* words;
};
constexpr std::array OUTCOMES = {
    Outcome{EXIT_DONE, "done"},
    Outcome{EXIT_WARNINGS, "with warnings"},
    Outcome{EXIT_NOTHING_TO_SPLIT, "nothing to split"},
    Outcome{EXIT_FAILED, "failed"},
};

std::size_t outcome_of(int code) {
  const auto* found = std::find_if(OUTCOMES.begin(), OUTCOMES.end(),
                                   [code](const Outcome& outcome) { return outcome.code == code; });
  return static_cast<std::size_t>(std::min(found, &OUTCOMES.back()) - OUTCOMES.begin());
}

/// Standard output cannot be written.
class NotPrinted : public std::system_error {
 public:
  using std::system_error::system_error;
};

void print_result(const std::string& text) {
  try {
    write_patiently(STDOUT_FILENO, text);
  } catch (const std::system_error& error) {
    throw NotPrinted(error.code());
  }
}

/// Prints what the jobs have printed, and counts how they ended.
class Results {
 public:
  Results(const EachInput& each, ProgressBar& bar) : each_(each), bar_(bar) {}

  void add(std::size_t job, const JobEnd& end) {
    bar_.wipe();
    if (!end.out.empty()) {
      print_result((has_printed_ ? each_.gap : each_.heading) + end.out);
      has_printed_ = true;
    }
    std::cerr << end.errors << std::flush;
    if (end.signal != 0) {
      fail(shown_name(each_.inputs[job]),
           std::string("was ended by the system: ") + ::strsignal(end.signal) +
               (end.signal == SIGKILL ? "; with -j 1 it has all the memory for itself"
                                      : "; run it alone to see more"));
    }
    ++counts_[outcome_of(end.signal == 0 ? end.exit_code : int{EXIT_FAILED})];
  }

  int worst() const {
    std::size_t worst = OUTCOMES.size() - 1;
    while (worst != 0 && counts_[worst] == 0) --worst;
    return OUTCOMES[worst].code;
  }

  std::string summary() const {
    std::string text;
    for (std::size_t i = 0; i < OUTCOMES.size(); ++i) {
      if (counts_[i] == 0) continue;
      text += (text.empty() ? ": " : ", ") + grouped(counts_[i]) + " " + OUTCOMES[i].words;
    }
    return counted(each_.inputs.size(), each_.one, each_.many) + text;
  }

 private:
  const EachInput& each_;
  ProgressBar& bar_;
  std::array<std::uint64_t, OUTCOMES.size()> counts_ = {};
  bool has_printed_ = false;
};

std::size_t as_many_as_cores() {
  return std::max(1U, std::thread::hardware_concurrency());
}

int run_all(const EachInput& each, const std::function<int(std::size_t)>& run) {
  ProgressBar bar(each.progress);
  Results results(each, bar);
  Jobs jobs;
  jobs.count = each.inputs.size();
  jobs.most_at_once = each.jobs == 0 ? as_many_as_cores() : each.jobs;
  jobs.run = run;
  jobs.ended = [&](std::size_t job, const JobEnd& end) { results.add(job, end); };
  jobs.progress = [&](std::size_t done) { bar.show(done, jobs.count, each.many); };
  bar.show(0, jobs.count, each.many);
  run_side_by_side(jobs);
  bar.wipe();
  if (each.summary) std::cerr << "velkstep: " << results.summary() << '\n';
  return results.worst();
}

}  // namespace

int for_each_input(const EachInput& each, const std::function<int(std::size_t)>& run) {
  if (std::count(each.inputs.begin(), each.inputs.end(), "-") > 1) {
    throw WrongUsage("standard input can be read only once; name files for the others");
  }
  if (each.inputs.size() == 1) return run(0);
  try {
    return run_all(each, run);
  } catch (const NotStarted& error) {
    return fail(shown_name(each.inputs[error.job()]), error.what());
  } catch (const NotPrinted& error) {
    return fail_to_print(error.code());
  }
}

}  // namespace Velkstep
