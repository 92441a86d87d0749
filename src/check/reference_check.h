// Checks what the records refer to.
#pragma once

#include "check/finding_list.h"
#include "check/record_places.h"
#include "kessel/file.h"

namespace Kessel {

/// Finds references to instances that are not there, and references in a circle. `places` holds
/// the place of each record. Afterwards no reference leads beyond the store, which has been given
/// the room.
void check_references(File& store, const RecordPlaces& places, FindingList& findings);

}  // namespace Kessel
