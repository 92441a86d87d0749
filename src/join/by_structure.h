// Makes what stands for a component one with the component in its own file.
#pragma once

#include <vector>

#include "join/records.h"

namespace Kessel {

/// A record that ties a file to another by reference, and is not needed when both are one.
using Documents = std::vector<Node>;

/// For each reference between files that are not of one split: unites the definition that stands
/// for the component, its version, product, product definition shape, shape definition
/// representations and representations with the component's own, and placements in those
/// representations with equal ones. What is in the referring file becomes a
/// counterpart. Returns the
/// documents of these references, ascending. Throws InputError where a file holds no definition
/// that could be meant; where several could, one is taken, and `doubts` gets a warning.
Documents unite_by_structure(const FileSet& files, Records& records, std::vector<Finding>& doubts);

}  // namespace Kessel
