// Where parts start from: their own definitions.
#include "association/associate.h"

namespace Kessel {

void initiate_recognition(const Store& store) {
  for (Part* part : store.parts) {
    if (store.root != nullptr)
      part->part_numbers.add(store.root, ++store.root->last_instance_number);
    if (part->part_kind != ASSEMBLY_PART) {
      part->part_numbers.add(part, ++part->last_instance_number);
    }
  }
}

}  // namespace Kessel
