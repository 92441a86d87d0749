// The order in which rules run over types: the splitter's policy, as a table.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "association/rules.h"

namespace Kessel {

struct Pass;

/// The types that a pass has selected among those of a file.
struct SelectedTypes {
  TypeNameSet types;  ///< whose records the rule is for
  TypeNameSet other;  ///< `Pass::other`
};

/// Runs a rule of rules.h with the arguments of a pass.
using Rule = void (*)(const Store& store, const Pass& pass, const SelectedTypes& selected);

namespace Rules {

void from_child(const Store&, const Pass&, const SelectedTypes&);
void from_children(const Store&, const Pass&, const SelectedTypes&);
void to_descendants(const Store&, const Pass&, const SelectedTypes&);
void both_ways(const Store&, const Pass&, const SelectedTypes&);
void gather_and_spread(const Store&, const Pass&, const SelectedTypes&);
void from_child_and_down(const Store&, const Pass&, const SelectedTypes&);
/// To typed children: those inside the other set, those outside.
void to_children_inside(const Store&, const Pass&, const SelectedTypes&);
void to_children_outside(const Store&, const Pass&, const SelectedTypes&);
/// Over nodes of the other type.
void through_relationships(const Store&, const Pass&, const SelectedTypes&);
void through_usages(const Store&, const Pass&, const SelectedTypes&);

}  // namespace Rules

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
};

/// The passes between recognition and the instances that nothing reached, in order.
std::span<const Pass> association_passes();

/// Runs one pass over `file`.
void run_pass(const Store& store, const Pass& pass);

}  // namespace Kessel
