// A finished split as JSON.
#pragma once

#include <string>

#include "run/split_run.h"

namespace Velkstep {

/// One line: the input, how it was split, the root's file, and each file with its part.
std::string split_json(const FinishedSplit& split, const SplitArguments& arguments);

}  // namespace Velkstep
