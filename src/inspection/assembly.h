// From products to their structure as plain data.
#pragma once

#include "inspection/inspected_file.h"
#include "kessel/assembly.h"

namespace Kessel {

/// What is known of the products of `file`, with the names that a split with `options` gives their
/// files.
Assembly assembly_of(const InspectedFile& file, const Options& options);

}  // namespace Kessel
