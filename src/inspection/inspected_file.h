// An exchange file that was read to be looked at.
#pragma once

#include <filesystem>
#include <vector>

#include "external/external_references.h"
#include "instances/instances.h"
#include "kessel/options.h"
#include "products/products.h"

namespace Kessel {

/// Its records, products and references to other files.
struct InspectedFile {
  /// Reads `in` once. Throws as read_assembly() does.
  InspectedFile(const std::filesystem::path& in, const Options& options);

  /// The folder that names in it are seen from.
  std::filesystem::path folder;
  Instances instances;
  Products products;
  std::vector<ExternalReference> references;
};

}  // namespace Kessel
