// What a person should know of references to other files.
#pragma once

#include <filesystem>
#include <istream>
#include <vector>

#include "external/external_references.h"
#include "instances/instances.h"
#include "kessel/finding.h"

namespace Kessel {

/// Warnings of files that are not there, and, with `tells_elsewhere`, of those in which something
/// stays, each once. `folder` is the one that the references are seen from, `in` the input that
/// `instances` was read from. Their lines are not yet known.
std::vector<Finding> reference_warnings(std::istream& in, const Instances& instances,
                                        const std::vector<ExternalReference>& references,
                                        const std::filesystem::path& folder, bool tells_elsewhere);

}  // namespace Kessel
