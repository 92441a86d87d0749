// The fields of the header section.
#pragma once

#include <string_view>

#include "kessel/summary.h"

namespace Kessel {

/// The fields in the text of a header section (ISO 10303-21, 8). Of an entity that is there
/// twice, the first counts.
Header read_header(std::string_view text);

}  // namespace Kessel
