// An exchange file that was read to be looked at.
#pragma once

#include <filesystem>

#include "instances/loader.h"
#include "kessel/options.h"
#include "products/products.h"

namespace Kessel {

/// Its records and products.
struct InspectedFile {
  /// Nothing yet.
  InspectedFile() = default;
  /// Reads `in` once. Throws as read_assembly() does.
  InspectedFile(const std::filesystem::path& in, const Options& options);

  /// The same with a loader of one's own, which fills `instances`.
  void read(const std::filesystem::path& in, const Options& options, InstanceLoader& loader);

  Instances instances;
  Products products;
};

}  // namespace Kessel
