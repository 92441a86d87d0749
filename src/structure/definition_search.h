// From a shape definition to the product definition behind it.
#pragma once

#include <cstdint>

#include "structure/reachability.h"

namespace Kessel {

/// The number of the first product definition that `start` leads to; without one, of the first
/// product definition with associated documents; without that, of the first mapped item; else 0.
/// Throws as `ReachabilitySearch::find` does.
std::uint32_t find_definition(ReachabilitySearch& search, std::uint32_t start);

}  // namespace Kessel
