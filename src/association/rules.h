// The rules by which parts spread along references, each over the records of some types.
//
// An instance that holds a part stands in the part's file under the number it got with the part;
// rules add parts to instances and never take one away. Every rule builds on adopt_parts().
//
// All fetch the records of a type in the order in which the store lists them and pass over empty
// slots. Those that take a set of types run once for each, in ascending order of the names. All
// throw `std::out_of_range` "invalid vector subscript" over a reference beyond the store.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/store.h"
#include "structure/type_names.h"

namespace Kessel {

/// Which parts a rule moves: all (0), or those whose `part_kind` has this value.
using KindFilter = std::uint32_t;
inline constexpr KindFilter ALL_PARTS = 0;
inline constexpr KindFilter ASSEMBLIES = ASSEMBLY_PART;
inline constexpr KindFilter LEAVES = LEAF_PART;

/// Gives `target` every part of `source` that passes `filter` and that it lacks, in the order of
/// the list of parts, each with the next number of that part's file. Numbers that a file gives out
/// are dense: nothing is counted for a part that `target` holds already. Either may be null.
/// Returns whether anything was added.
bool adopt_parts(const Entity* source, Entity* target, KindFilter filter);

/// Gives `source`'s parts to `start` and, breadth first, to what is below each instance that gained
/// one. An instance that gains nothing stops the walk. Returns whether anything was added.
bool propagate_down(const Store& store, const Entity* source, Entity* start, KindFilter filter);

/// Each record of the type takes the parts of its `n`-th reference, counted from 0. A record with
/// fewer references prints one line on standard error and is passed over.
void propagate_from_child(const Store& store, std::string_view type, std::uint16_t n,
                          KindFilter filter);
void propagate_from_child(const Store& store, const TypeNameSet& types, std::uint16_t n,
                          KindFilter filter);

/// Each record of the type takes the parts of all its references.
void propagate_from_children(const Store& store, std::string_view type, KindFilter filter);
void propagate_from_children(const Store& store, const TypeNameSet& types, KindFilter filter);

/// Each record of the type spreads its parts to everything below it.
void propagate_to_descendants(const Store& store, std::string_view type, KindFilter filter);

/// Each record of the type takes the parts of all its references, then gives its own to each.
void propagate_both_ways(const Store& store, std::string_view type, KindFilter filter);

/// Each record of the type takes the parts of all its references, then spreads its own to
/// everything below it.
void gather_and_spread(const Store& store, std::string_view type, KindFilter filter);
void gather_and_spread(const Store& store, const TypeNameSet& types, KindFilter filter);

/// Each record of the type takes the parts of its `n`-th reference (the line of
/// `propagate_from_child` where there is none), then spreads its own to everything below it.
void propagate_from_child_and_down(const Store& store, std::string_view type, std::uint16_t n,
                                   KindFilter filter);
void propagate_from_child_and_down(const Store& store, const TypeNameSet& types, std::uint16_t n,
                                   KindFilter filter);

/// Which references `propagate_to_typed_children` follows.
enum class ChildTypes {
  outside,  ///< those to records whose type is not in the set, untyped records included
  inside,   ///< those to records whose type is in the set
};

/// Each record of the types spreads its parts through those of its references that `mode` selects.
void propagate_to_typed_children(const Store& store, const TypeNameSet& types,
                                 const TypeNameSet& child_types, ChildTypes mode,
                                 KindFilter filter);

/// From every node (record of `node_type`) that holds a part, parts climb along relationships: each
/// relationship whose `n`-th reference is the node takes the node's parts and gives them to all its
/// references; those that gained are nodes in turn. A relationship with fewer references prints the
/// line of `Entity::get_reference` for each node and is passed over.
void propagate_through_relationships(const Store& store, std::string_view relationship_type,
                                     std::string_view node_type, std::uint16_t n);

/// The same, but only references that hold no part yet take the node's parts, and they spread them
/// to everything below: what belongs to a part already is left alone.
void propagate_through_usages(const Store& store, std::string_view relationship_type,
                              std::string_view node_type, std::uint16_t n);

}  // namespace Kessel
