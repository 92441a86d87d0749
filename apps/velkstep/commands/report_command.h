// velkstep report IN OUTDIR
#pragma once

#include "run/split_arguments.h"

namespace Velkstep {

/// Splits as `split` does, and writes a page about the parts beside their files, whose path is all
/// that it prints.
int report(const SplitArguments& arguments);

}  // namespace Velkstep
