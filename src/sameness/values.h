// Which records are values and which bear identity: the one table of that.
#pragma once

#include <cstdint>
#include <string_view>

#include "instances/type_table.h"

namespace Kessel::Sameness {

/// What a record is to others that refer to it.
///
/// A value is no more than what it says: two of them that say the same are as good as one, so files
/// are compared by which values they have, not by how many copies. All else bears identity: a
/// second vertex at the same place is another vertex. What is in no row of the table bears
/// identity, since to count copies that do not matter is noticed, and to lose one that does is not.
enum class Worth : std::uint8_t {
  identity,
  geometry,    ///< points, directions, placements, curves and surfaces (ISO 10303-42)
  measure,     ///< units and amounts (ISO 10303-41)
  appearance,  ///< colours, fonts and styles, without what they are put on (ISO 10303-46)
  management,  ///< persons, organisations, dates, roles, kinds and states (ISO 10303-41)
};

/// What a record of that type is worth. A line of a reference section is a value. A complex
/// instance is a value when each of its partial records is one, or is only an abstract supertype of
/// one.
Worth worth_of(const TypeTable& types, TypeId type);

/// Which of its references give identity to geometry, because they mean this item, not its value:
/// those of records that say something about an item, or collect items of their own.
bool names_items(std::string_view keyword);

/// The same for values of every kind: records that give one record a name or a number of its own.
bool names_values(std::string_view keyword);

/// Whether records of that type are what shapes are made of and bear identity: topology, solids,
/// tessellations. They use geometry for what it says, whichever copy that is, and say nothing
/// unless something else leads to them.
bool is_shape_part(const TypeTable& types, TypeId type);

/// Whether records of that type may refer twice to one and the same record where they refer to two
/// that say the same: what they list is no set and has no duty to be unique (ISO 10303-42).
bool may_repeat(const TypeTable& types, TypeId type);

/// Whether records of that type are what representations are in, which say nothing unless
/// something leads to them.
bool is_representation_context(const TypeTable& types, TypeId type);

}  // namespace Kessel::Sameness
