// What is looked for in the records of an input that was read.
#pragma once

#include <filesystem>
#include <istream>

#include "findings/finding_list.h"
#include "instances/instances.h"
#include "products/products.h"

namespace Kessel {

/// Adds to `findings` what is wrong or unusual about references and product structure of
/// `instances`, read from `in` in `folder`, whose products are `products`.
void check_records(std::istream& in, const Instances& instances, const Products& products,
                   const std::filesystem::path& folder, FindingList& findings);

}  // namespace Kessel
