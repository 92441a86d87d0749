// The fields of the header section.
#pragma once

#include <string>
#include <vector>

#include "kessel/summary.h"

namespace Kessel {

/// The fields in the entities of a header section (ISO 10303-21, 8). Of an entity that is there
/// twice, the first counts.
Header read_header(const std::vector<std::string>& entities);

}  // namespace Kessel
