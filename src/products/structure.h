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

/// The definitions at the ends of a usage.
struct UsageEnds {
  Index assembly;
  Index component;
};

/// Usages with their texts and what places them; the products at the ends are not looked up yet:
/// `ends[i]` has the definitions of usage i.
struct UsagesWithEnds {
  std::vector<Usage> usages;
  std::vector<UsageEnds> ends;
  std::vector<Usage> deeper;  ///< as Products::deeper
  std::vector<UsageEnds> deeper_ends;
};

/// The usages whose ends are product definitions, or occurrences of those.
UsagesWithEnds find_usages(const Instances& instances, const Shapes& shapes);

/// Fills representations, tied, ties, tied_to_others and has_bodies of all products.
void find_representations(const Instances& instances, Products& products);

/// Fills closes_circle, stands_with and tops.
void find_tops(Products& products);

/// Whether `record` is a product definition: by its type, or since it has a version.
bool is_definition(const Instances& instances, Index record);

/// The first record that `record` refers to and whose type begins with `beginning`.
Index first_reference(const Instances& instances, Index record, std::string_view beginning);

}  // namespace Kessel
