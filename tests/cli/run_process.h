// Runs the built command and collects what it leaves.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
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
  std::string standard_input = {};   ///< a file to read from in place of nothing
  bool terminal = false;             ///< whether ProcessRun::out is printed to a terminal
  /// Variables to set, and their values.
  std::vector<std::pair<std::string, std::string>> environment = {};
  bool random_addresses = true;     ///< whether the system may lay out memory at random
  unsigned most_cpu_seconds = 300;  ///< a process that computes longer is ended by a signal
  std::uint64_t most_stack = 0;     ///< bytes that the stack may take, unless it is 0
  std::uint64_t most_memory = 0;    ///< bytes of addresses that the process may use, unless it is 0
  std::uint64_t most_file_bytes = 0;  ///< bytes that a file may have, unless it is 0
  std::uint64_t most_files = 0;       ///< descriptors that the process may have, unless it is 0
  bool minds_permissions = false;     ///< whether permissions bind the process even if it is root's
  unsigned killed_before_call = 0;    ///< its how many-th system call it does not live to make
  int signal = 0;                     ///< what to send to the process, unless it is 0
  std::chrono::steady_clock::duration signal_after{};  ///< and when
};

/// Runs velkstep with these arguments in the current folder and waits for its end.
ProcessRun run_velkstep(const std::vector<std::string>& arguments,
                        const ProcessSetting& setting = {});

/// Runs velkstep once for each list of arguments, all at the same time, and waits for all.
std::vector<ProcessRun> run_side_by_side(const std::vector<std::vector<std::string>>& runs);

}  // namespace Kessel::test
