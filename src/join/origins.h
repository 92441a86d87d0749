// Which of the files that are joined speak of one input.
#pragma once

#include <cstddef>
#include <vector>

#include "join/file_set.h"

namespace Kessel {

/// Positions of files: of one that no split wrote, or of all that one split did. Marks have made
/// one what is one within an origin; what only says the same becomes one between origins.
using Origin = std::vector<std::size_t>;

std::vector<Origin> origins_of(const FileSet& files);

}  // namespace Kessel
