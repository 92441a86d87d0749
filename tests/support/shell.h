// Runs a line of shell and collects what it prints.
#pragma once

#include <string>

namespace Kessel::test {

struct ShellRun {
  std::string out;  ///< standard output; what is printed elsewhere is the command's own affair
  int status;       ///< as the system's wait() gives it; 0 where all went well
};

/// Runs `command` with the system's shell in the current folder and waits for its end.
ShellRun run_in_shell(const std::string& command);

}  // namespace Kessel::test
