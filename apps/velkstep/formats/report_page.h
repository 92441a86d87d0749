// The page that shows a split.
#pragma once

#include <string>

#include "run/split_arguments.h"
#include "run/split_run.h"

namespace Velkstep {

/// One HTML page in UTF-8 with the structure and the files of `split`, which it links as files
/// beside itself. It loads nothing. Reads the input once more; throws as `Kessel::read_overview`.
std::string report_page(const FinishedSplit& split, const SplitArguments& arguments);

}  // namespace Velkstep
