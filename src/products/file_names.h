// What the files of products are called.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "kessel/options.h"
#include "products/products.h"

namespace Kessel {

/// The names, without a folder, of one file for each of `products`, in that order. NO_PRODUCT
/// stands for a root that only holds several tops together: "Root.stp".
///
/// NameStyle::record: "#12_part.stp" after the number of the PRODUCT, with "_(2)_", "_(3)_" ... for
/// further definitions of one product. The other styles: after the product's name, or its id where
/// the name is of no use for a file, and where neither is, "part 12.stp" after that number. No two
/// differ in case or normal form only, nor from any of `referred`, file names in UTF-8.
std::vector<std::filesystem::path> file_names(const Instances& instances, const Products& all,
                                              std::span<const ProductId> products, NameStyle style,
                                              const std::vector<std::string>& referred = {});

}  // namespace Kessel
