// Which records nothing leads to.
#pragma once

#include <vector>

#include "instances/instances.h"

namespace Kessel::Shrink {

/// The records, ascending, to which no record leads that says something by itself.
///
/// Nothing by themselves say values, parts of shapes and the contexts of representations
/// (sameness/values.h): a colour that nothing has, a solid that no representation shows. All else
/// says something, unknown types included: products and what is said of them, representations,
/// styles, layers, properties, assignments, anchors.
std::vector<Index> unreachable_records(const Instances& instances);

}  // namespace Kessel::Shrink
