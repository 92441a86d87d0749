// An exchange file that was read to be looked at.
#pragma once

#include <filesystem>

#include "instances/instances.h"
#include "kessel/options.h"
#include "products/products.h"

namespace Kessel {

/// Its records and products.
struct InspectedFile {
  /// Reads `in` once. Throws as read_assembly() does.
  InspectedFile(const std::filesystem::path& in, const Options& options);

  Instances instances;
  Products products;
};

}  // namespace Kessel
