// The steps in which products are found; each fills its part of Products.
#pragma once

#include <unordered_map>

#include "products/products.h"

namespace Kessel {

/// The shapes of a file by what they are the shape of.
struct Shapes {
  std::unordered_map<Index, std::vector<Index>> of;         ///< definition or usage -> shapes
  std::unordered_map<Index, std::vector<ShapeLink>> links;  ///< shape -> links
};

Shapes find_shapes(const Instances& instances);

/// The records that say "this is a direct component of that", ascending, wherever they lead.
std::vector<Index> usage_records(const Instances& instances);

/// Usages whose ends are product definitions, with their texts and what places them; the products
/// at the ends are not looked up yet: `ends[i]` has the definitions of usage i.
struct UsageEnds {
  Index assembly;
  Index component;
};
std::vector<Usage> find_usages(const Instances& instances, const Shapes& shapes,
                               std::vector<UsageEnds>& ends);

/// Fills representations, tied, ties and has_bodies of all products.
void find_representations(const Instances& instances, Products& products);

/// Fills closes_circle, shown_by and tops.
void find_tops(Products& products);

/// Whether `record` is a product definition: by its type, or since it has a version.
bool is_definition(const Instances& instances, Index record);

/// The first record that `record` refers to and whose type begins with `beginning`.
Index first_reference(const Instances& instances, Index record, std::string_view beginning);

}  // namespace Kessel
