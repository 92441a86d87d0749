// velkstep split IN OUTDIR
#pragma once

#include "run/split_arguments.h"

namespace Velkstep {

struct SplitCommandArguments : SplitArguments {
  bool json = false;
};

/// Splits `arguments.in` into files under `arguments.outdir` and prints their paths on standard
/// output, the root's first.
int split(const SplitCommandArguments& arguments);

}  // namespace Velkstep
