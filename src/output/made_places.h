// Places of components that an assembly shows by mapped items.
#pragma once

#include "output/file_numbers.h"
#include "output/made_records.h"
#include "placement/placement.h"

namespace Kessel {

/// Says once more where components are that stand in other files and that `file` places by mapped
/// items alone (MAPPED_ITEM, ISO 10303-43): such an item shows a placeholder, which is empty, and a
/// reader that opens the component's file puts it where a CONTEXT_DEPENDENT_SHAPE_REPRESENTATION
/// (ISO 10303-41) says. A component's first usage has the place of its first mapped item, and so
/// on.
void make_places(const Instances& instances, const Products& products, const Placement& placement,
                 const FileNumbers& numbers, FileId file, MadeRecords& made);

}  // namespace Kessel
