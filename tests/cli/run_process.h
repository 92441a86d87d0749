// Runs the built command and collects what it leaves.
#pragma once

#include <string>
#include <vector>

namespace Kessel::test {

/// How a process ended and what it printed.
struct ProcessRun {
  int exit_code = 0;   ///< minus the signal's number when a signal ended it
  std::string out;     ///< standard output
  std::string errors;  ///< standard error
};

/// What a process may differ in from others.
struct ProcessSetting {
  std::string standard_output = {};  ///< a file to print to in place of ProcessRun::out
  bool random_addresses = true;      ///< whether the system may lay out memory at random
  unsigned most_cpu_seconds = 300;   ///< a process that computes longer is ended by a signal
};

/// Runs velkstep with these arguments in the current folder and waits for its end.
ProcessRun run_velkstep(const std::vector<std::string>& arguments,
                        const ProcessSetting& setting = {});

}  // namespace Kessel::test
