// An exchange file that was read to be looked at.
#pragma once

#include <filesystem>
#include <vector>

#include "external/external_references.h"
#include "instances/loader.h"
#include "kessel/options.h"
#include "products/products.h"

namespace Kessel {

/// Its records, products and references to other files.
struct InspectedFile {
  /// Nothing yet.
  InspectedFile() = default;
  /// Reads `in` once. Throws as read_assembly() does.
  InspectedFile(const std::filesystem::path& in, const Options& options);

  /// The same with a loader of one's own, which fills `instances`.
  void read(const std::filesystem::path& in, const Options& options, InstanceLoader& loader);

  /// The folder that names in it are seen from.
  std::filesystem::path folder;
  Instances instances;
  Products products;
  std::vector<ExternalReference> references;
};

}  // namespace Kessel
