// Leaf parts among the parts that hold a record.
#pragma once

#include "kessel/part.h"

namespace Kessel {

/// The first leaf part, in the order of the list, that holds `record`; null when none does.
inline const Part* first_leaf(const Entity& record) {
  for (const auto [part, number] : record.part_numbers.entries()) {
    if (part->part_kind == LEAF_PART) return part;
  }
  return nullptr;
}

}  // namespace Kessel
