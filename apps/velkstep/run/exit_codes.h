// What the command's exit codes mean.
#pragma once

namespace Velkstep {

/// Exit codes of every subcommand.
enum ExitCode : int {
  EXIT_DONE = 0,              ///< did what was asked
  EXIT_FAILED = 1,            ///< failed; one line on standard error says why
  EXIT_WRONG_USAGE = 2,       ///< the arguments make no sense
  EXIT_NOTHING_TO_SPLIT = 3,  ///< the file holds one part or none, and the split is a classic one
  EXIT_WARNINGS = 4,          ///< what was checked works, but deserves a look
};

/// Exit codes of `diff`, as comparing programs have them.
enum DiffExitCode : int {
  EXIT_DIFFERENT = 1,  ///< the files do not say the same
  EXIT_TROUBLE = 2,    ///< wrong usage, or a file that cannot be read
};

/// The same for `--help` of the program.
inline constexpr const char* EXIT_CODES =
    "Exit codes:\n"
    "  0  done\n"
    "  1  failed; one line on standard error says why\n"
    "  2  wrong usage\n"
    "  3  nothing to split, with --classic: the file holds one part or none\n"
    "  4  check, verify: warnings, but no errors";

/// Of commands that read and write.
inline constexpr const char* USUAL_EXIT_CODES =
    "Exit codes:\n"
    "  0  done\n"
    "  1  failed; one line on standard error says why\n"
    "  2  wrong usage";

/// Of those that split.
inline constexpr const char* SPLIT_EXIT_CODES =
    "Exit codes:\n"
    "  0  done\n"
    "  1  failed; one line on standard error says why\n"
    "  2  wrong usage\n"
    "  3  nothing to split, with --classic: the file holds one part or none";

/// Of those that find faults.
inline constexpr const char* CHECK_EXIT_CODES =
    "Exit codes:\n"
    "  0  nothing was found\n"
    "  1  errors, or it failed\n"
    "  2  wrong usage\n"
    "  4  warnings, but no errors";

/// And for those of `diff`.
inline constexpr const char* DIFF_EXIT_CODES =
    "Exit codes:\n"
    "  0  the files say the same\n"
    "  1  they do not\n"
    "  2  wrong usage, or a file cannot be read";

}  // namespace Velkstep
