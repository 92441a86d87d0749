// Places of components that are said in ways that lead to placeholders.
#pragma once

#include "output/file_numbers.h"
#include "output/made_records.h"
#include "placement/placement.h"

namespace Kessel {

/// Says once more where components are that stand in other files, so that a reader that opens the
/// component's file finds the place:
/// - of components that `file` places by mapped items alone (MAPPED_ITEM, ISO 10303-43), since such
///   an item shows a placeholder, which is empty, and that reader goes by what a
///   CONTEXT_DEPENDENT_SHAPE_REPRESENTATION (ISO 10303-41) says. A component's first usage has the
///   place of its first mapped item, and so on;
/// - of components that a relationship without a transformation puts where the assembly is, which
///   show a placeholder, too;
/// - of components whose place is said of a representation that is only tied to the one that their
///   definition names: the definition names that one as well then.
void make_places(const Instances& instances, const Products& products, const Placement& placement,
                 const FileNumbers& numbers, FileId file, MadeRecords& made);

}  // namespace Kessel
