// An exchange file that was read to be looked at.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "external/external_references.h"
#include "findings/finding_list.h"
#include "instances/loader.h"
#include "join/followed_input.h"
#include "kessel/options.h"
#include "products/products.h"

namespace Kessel {

/// Its records, products and references to other files.
struct InspectedFile {
  /// Nothing yet.
  InspectedFile() = default;
  /// Reads `in` once; with Options::follow_references, together with what it refers to. Throws as
  /// read_assembly() does.
  InspectedFile(const std::filesystem::path& in, const Options& options);

  /// Reads `in` alone into nothing yet, and puts what it is warned of into `warnings`.
  void read(const std::filesystem::path& in, const Options& options, FindingList& warnings);

  /// The same with a loader of one's own, which fills `instances`.
  void read(const std::filesystem::path& in, const Options& options, InstanceLoader& loader);

  /// The folder that names in it are seen from.
  std::filesystem::path folder;
  Instances instances;
  Products products;
  std::vector<ExternalReference> references;
  /// The files that were read: the input, and those that it was read with.
  std::vector<std::filesystem::path> files;
  /// What following them was warned of, as FollowedInput::doubts().
  std::vector<Finding> doubts;
};

/// Tells `options.warning` of these and of references that lead nowhere, with their lines; `in` is
/// what `instances` was read from.
void tell_warnings(const std::filesystem::path& in, const Instances& instances,
                   FindingList& warnings, const Options& options);

}  // namespace Kessel
