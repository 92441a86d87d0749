// From parts back to the numbers of their records.
#pragma once

#include <cstdint>
#include <vector>

#include "model/store.h"

namespace Kessel {

/// The instance number of each part's record, by position in the list of parts; 0 for a part that
/// stands for no record.
std::vector<std::uint32_t> part_records(const Store& store);

}  // namespace Kessel
