// Lists what differs, product by product.
#pragma once

#include <vector>

#include "kessel/diff.h"
#include "sameness/compared_file.h"
#include "sameness/owners.h"

namespace Kessel::Sameness {

/// One of the files that are compared; what it names must outlive it.
struct Compared {
  const ComparedFile& file;
  const Owners& owners;
  const BodyReader& body_of;
};

/// What differs between two files that do not say the same.
std::vector<ProductDifference> differences(const Compared& a, const Compared& b);

}  // namespace Kessel::Sameness
