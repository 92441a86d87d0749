// velkstep split IN... [-o OUTDIR]
#pragma once

#include "run/split_arguments.h"

namespace Velkstep {

/// Splits every input into files of its own folder and prints their paths on standard output, the
/// root's first.
int split(const SplitArguments& arguments);

}  // namespace Velkstep
