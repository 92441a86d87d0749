// Exchange files of assemblies, made by chance: all that real files attach to products.
#pragma once

#include <cstdint>
#include <string>

namespace Kessel::test {

/// Which kinds of things an assembly may have. By default, all of them.
struct AssemblyTraits {
  bool several_tops = true;
  bool circles = true;
  bool lost_records = true;     ///< records that belong to no product
  bool schemas = true;          ///< those of AP203, with its own records, and AP242 beside AP214
  bool sections = true;         ///< anchors, references to other files, two data sections
  bool styles_by_place = true;  ///< styles that name what places an occurrence
  bool shuffled = true;         ///< records in any order, numbers with gaps and in any order
};

/// The text of an exchange file with two to a dozen products: usages over several levels, shared
/// components, own bodies of assemblies, shapes tied by relationships, several representations,
/// mapped items, bodies of several products, views, pieces, shapes of aspects; colours, overriding
/// styles, styles of single occurrences and of those at higher levels, layers, invisibility;
/// properties, product manufacturing information, usages with shapes of their own; approvals,
/// dates, persons, categories, documents, materials; names with all characters. Every reference
/// leads to a record. The same seed gives the same text.
std::string random_assembly(std::uint64_t seed, const AssemblyTraits& traits = {});

}  // namespace Kessel::test
