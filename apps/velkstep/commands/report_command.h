// velkstep report IN... [-o OUTDIR]
#pragma once

#include "run/split_arguments.h"

namespace Velkstep {

/// Splits as `split` does, and writes a page about the parts beside each input's files, whose path
/// is all that it prints.
int report(const SplitArguments& arguments);

}  // namespace Velkstep
