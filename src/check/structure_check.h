// Checks the product structure.
#pragma once

#include <filesystem>
#include <istream>

#include "findings/finding_list.h"
#include "instances/instances.h"
#include "products/products.h"

namespace Kessel {

/// Adds to `findings` what a split of `instances`, read from `in` in `folder`, has to pass over or
/// cannot do, and which files are not there that the input refers to. `products` are theirs.
void check_structure(std::istream& in, const Instances& instances, const Products& products,
                     const std::filesystem::path& folder, FindingList& findings);

}  // namespace Kessel
