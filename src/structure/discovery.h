// Finds the records that are parts.
#pragma once

#include <cstdint>
#include <vector>

#include "model/store.h"

namespace Kessel {

/// The numbers of the records that are parts: product definitions and mapped items that lead to a
/// product or a shape. Ascending. Throws `std::out_of_range` "invalid vector subscript" on coming
/// to a number beyond the store.
std::vector<std::uint32_t> find_part_numbers(const Store& store);

/// Puts a part into the slot of each such record, in its place, and into the list of parts.
void find_and_create_parts(Store& store);

}  // namespace Kessel
