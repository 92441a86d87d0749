// Where parts start from: their own definitions.
#include "kessel/file.h"

namespace Kessel {

/// Enters every part's definition into the root's file, and every leaf's into its own as number 1.
/// Without a root, only the latter. Unlike the rules, this gives no number back when the definition
/// holds the part already; a gap in the root's numbers is part of the output.
void File::initiate_recognition() const {
  for (Part* part : parts_) {
    if (root_ != nullptr) part->part_numbers.emplace(root_, ++root_->last_instance_number);
    if (part->part_kind != ASSEMBLY_PART) {
      part->part_numbers.emplace(part, ++part->last_instance_number);
    }
  }
}

/// Where every assembly has a file of its own: enters each part's definition into its own file
/// only. Its parents' files get it with their usages. A generated root has no definition.
void File::recognise_own_files() const {
  for (Part* part : parts_) {
    if (part == root_ && root_generated_) continue;
    part->part_numbers.emplace(part, ++part->last_instance_number);
  }
}

}  // namespace Kessel
