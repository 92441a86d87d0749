// What the command's exit codes mean.
#pragma once

namespace Velkstep {

/// Exit codes of every subcommand.
enum ExitCode : int {
  EXIT_DONE = 0,              ///< did what was asked
  EXIT_FAILED = 1,            ///< failed; one line on standard error says why
  EXIT_WRONG_USAGE = 2,       ///< the arguments make no sense
  EXIT_NOTHING_TO_SPLIT = 3,  ///< the file holds one part or none
  EXIT_WARNINGS = 4,          ///< what was checked works, but deserves a look
};

/// The same for `--help`.
inline constexpr const char* EXIT_CODES =
    "Exit codes:\n"
    "  0  done\n"
    "  1  failed; one line on standard error says why\n"
    "  2  wrong usage\n"
    "  3  nothing to split: the file holds one part or none\n"
    "  4  check, verify: warnings, but no errors";

}  // namespace Velkstep
