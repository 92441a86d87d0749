// What commands that take several inputs have in common.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "text/progress_bar.h"

namespace Velkstep {

/// How several inputs are worked on.
struct EachInput {
  std::vector<std::string> inputs;  ///< what they are called in messages; "-" for standard input
  std::size_t jobs = 0;             ///< how many at once; 0 for as many as there are cores
  std::string heading = {};         ///< in front of what several of them print
  std::string gap = {};             ///< between what one prints and what the next one does
  const char* one = "input";        ///< what one of them is called in that line,
  const char* many = "inputs";      ///< and several
  bool summary = true;              ///< whether a line on standard error sums up several
  ShowProgress progress = ShowProgress::never;
};

/// Calls `run` with the index of every input, also behind one that failed, and returns the worst
/// exit code. One input is worked on by this process. Several are by processes of their own side by
/// side; what they print comes in the order of the inputs.
/// Throws `WrongUsage` where standard input is among them twice, and `Interrupted` when the command
/// is asked to stop: what was not finished by then is undone.
int for_each_input(const EachInput& each, const std::function<int(std::size_t)>& run);

}  // namespace Velkstep
