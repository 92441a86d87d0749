// The order in which rules run over types: the splitter's policy, as a table.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "association/rules.h"

namespace Kessel {

/// The rules of a pass, by the shape of their work.
enum class Rule {
  from_child,             ///< propagate_from_child
  from_children,          ///< propagate_from_children
  to_descendants,         ///< propagate_to_descendants
  both_ways,              ///< propagate_both_ways
  gather_and_spread,      ///< gather_and_spread
  from_child_and_down,    ///< propagate_from_child_and_down
  to_children_inside,     ///< propagate_to_typed_children, types inside the other set
  to_children_outside,    ///< propagate_to_typed_children, types outside the other set
  through_relationships,  ///< propagate_through_relationships over nodes of the other type
  through_usages,         ///< propagate_through_usages over nodes of the other type
  spread_to_leaves,       ///< gather_and_spread_to_leaves
  styles_to_items,        ///< styles_to_their_items
  usages_to_assemblies,   ///< usages_to_their_assemblies
  tops_to_root,           ///< tops_to_generated_root
};

/// The styles that a pass belongs to: a bit for each, by the style's value.
enum class In : std::uint8_t {
  classic = 1 << static_cast<int>(AssemblyStyle::classic),
  lean = 1 << static_cast<int>(AssemblyStyle::lean),
  nested = 1 << static_cast<int>(AssemblyStyle::nested),
  classic_and_lean = classic | lean,  ///< where one file holds the whole structure
  classic_and_nested = classic | nested,
  lean_and_nested = lean | nested,  ///< where geometry stays in its component's file
  every_style = classic | lean | nested,
};

/// Sets of types that depend on the file's own type names.
enum class TypeGroup {
  none,
  shape_representations,    ///< all kinds of shape representation
  placements_and_contexts,  ///< what a representation may hold without having geometry
  transformations,          ///< complex relationships with a transformation
  units,                    ///< conversion based units
};

/// A selection of types: literal names, or a group.
struct TypeSelection {
  TypeSelection() = default;
  TypeSelection(std::initializer_list<std::string_view> literal) : names(literal) {}
  TypeSelection(TypeGroup derived) : group(derived) {}

  /// The names in ascending byte order, the order in which a pass visits them.
  TypeNameSet resolve(const std::set<std::string>& file_types) const;

  std::vector<std::string_view> names;
  TypeGroup group = TypeGroup::none;
};

/// One pass: a rule over the records of some types.
struct Pass {
  TypeSelection types;
  Rule rule;
  KindFilter filter = ALL_PARTS;
  std::uint16_t n = 0;       ///< the reference that rules with a position look at
  TypeSelection other = {};  ///< child types or node type, for the rules that have one
  In in = In::every_style;
};

/// The passes of a style between recognition and the instances that nothing reached, in order.
std::vector<Pass> association_passes(AssemblyStyle style = AssemblyStyle::classic);

/// Runs one pass over `file`.
void run_pass(const Store& store, const Pass& pass);

}  // namespace Kessel
