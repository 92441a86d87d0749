// Lists what differs, product by product.
#pragma once

#include <filesystem>
#include <vector>

#include "kessel/diff.h"
#include "sameness/compared_file.h"
#include "sameness/owners.h"

namespace Kessel::Sameness {

/// One of the files that are compared; what it names must outlive it.
struct Compared {
  const std::filesystem::path& path;
  const ComparedFile& file;
  const Owners& owners;
};

/// What differs between two files that do not say the same.
std::vector<ProductDifference> differences(const Compared& a, const Compared& b);

}  // namespace Kessel::Sameness
