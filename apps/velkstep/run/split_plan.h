// Which inputs are split into which folders.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "run/split_arguments.h"
#include "run/wrong_usage.h"

namespace Velkstep {

/// One split for each input, its `in` and `outdir` set, all else as in `arguments`. Without
/// `arguments.output`, the second of two inputs is the folder where it is no regular file. One
/// input goes into the folder itself, without one into a folder of its own name; several go into
/// folders of their names below it. Throws `WrongUsage` where two inputs would go into one folder,
/// an input has no name for one, or is a folder. Several parts go into folders of their names below
/// that of their input.
std::vector<SplitArguments> plan_splits(const SplitArguments& arguments);

/// Calls `split_one` for each input, several side by side. Returns the worst exit code. Throws as
/// plan_splits() and for_each_input().
int for_each_split(const SplitArguments& arguments,
                   const std::function<int(const SplitArguments&)>& split_one);

}  // namespace Velkstep
