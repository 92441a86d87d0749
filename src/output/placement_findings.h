// What a placement deserves a look for, in sentences.
#pragma once

#include <istream>

#include "instances/instances.h"
#include "kessel/finding.h"
#include "placement/placement.h"

namespace Kessel {

/// The finding for `warning`, with its offset; its line is not yet known. `in` is the input that
/// `instances` was read from.
Finding finding_for(std::istream& in, const Instances& instances, const PlacementWarning& warning);

}  // namespace Kessel
