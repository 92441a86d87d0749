// Writes what stays of a file, by a second reading.
#pragma once

#include <istream>
#include <ostream>

#include "kessel/options.h"
#include "shrink/survivors.h"

namespace Kessel::Shrink {

/// Reads the input of `instances` again from `in` and writes to `out` its header and sections with
/// the records that stay. Of the options the progress matters. Throws InputError where the input is
/// not the same any more. Looks for no errors of `out` but to stop when there is one.
void write_shrunk(std::istream& in, const Instances& instances, Survivors& survivors,
                  std::ostream& out, const Options& options);

}  // namespace Kessel::Shrink
