// The order of the structure passes.
#pragma once

#include "model/store.h"

namespace Kessel {

/// Finds the parts of `store`, which was read, their links, root and file names. `decode` is handed
/// on to the naming after products. Prints the fixed sentences on standard error where there is
/// exactly one part, which ends it, or no root. Throws `std::out_of_range` "invalid vector
/// subscript" over a reference beyond the store.
void process_parts(Store& store, std::string (*decode)(std::string_view));

}  // namespace Kessel
