// What the command's exit codes mean.
#pragma once

namespace Velkstep {

/// Exit codes of every subcommand; `--help` lists them.
enum ExitCode : int {
  EXIT_DONE = 0,              ///< did what was asked
  EXIT_FAILED = 1,            ///< failed; one line on standard error says why
  EXIT_WRONG_USAGE = 2,       ///< the arguments make no sense
  EXIT_NOTHING_TO_SPLIT = 3,  ///< the file holds one part or none
};

}  // namespace Velkstep
