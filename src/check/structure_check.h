// Checks the product structure.
#pragma once

#include "check/record_places.h"
#include "findings/finding_list.h"
#include "model/store.h"

namespace Kessel {

/// Finds out whether there is something to split, and usages that join no parts or lead in a
/// circle. No reference in the store may lead beyond it.
void check_structure(const Store& store, const RecordPlaces& places, FindingList& findings);

}  // namespace Kessel
