// What records are worth as their file uses them: the rules by which values never become one.
#pragma once

#include "instances/column.h"
#include "instances/instances.h"
#include "sameness/order.h"
#include "sameness/values.h"

namespace Kessel::Sameness {

/// By record: what its type is worth, but identity where a use means this very record and not what
/// it says. That is so for
/// - what stands in a collector's list: items of a representation, of a layer, of an invisibility;
/// - geometry that others name (names_items): targets of styles, of an item's identification, of a
///   transformation;
/// - whatever an anchor or an attribute (names_values) names.
Column<Worth> worth_in_use(const Instances& instances);

/// By record: whether equal ones may become one record. These are values that lead to records
/// only, bear no identity in use and are no part of a circle; of geometry, those used by nothing
/// but other values and by parts of shapes, which are known to want what it says.
///
/// Two that one record refers to must still not become one, unless it may repeat (may_repeat).
Column<bool> mergeable(const Instances& instances, const Order& order);

}  // namespace Kessel::Sameness
