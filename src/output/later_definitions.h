// The order of products in a file.
#pragma once

#include <vector>

#include "placement/placement.h"

namespace Kessel {

/// By file: the definitions that are to stand behind that of the product which the file is of,
/// ascending. A reader that follows a reference takes the first product of the file that has a
/// shape and no usage. In the input others may be in front of it: pieces of its shape, which it
/// shows by mapped items, and other views of it. None of an extraction: no file refers to it.
std::vector<std::vector<Index>> later_definitions(const Products& products,
                                                  const Placement& placement);

}  // namespace Kessel
