// The products of an exchange file, how they are put together, and where their shapes are.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "instances/instances.h"

namespace Kessel {

/// Position of a product in Products::products.
using ProductId = std::uint32_t;

inline constexpr ProductId NO_PRODUCT = 0xFFFF'FFFF;

/// A record that says which representation shows a shape: SHAPE_DEFINITION_REPRESENTATION
/// (ISO 10303-41), or its supertype where that says the same.
struct ShapeLink {
  Index link = NO_RECORD;
  Index shape = NO_RECORD;           ///< the PRODUCT_DEFINITION_SHAPE
  Index representation = NO_RECORD;  ///< the shape representation
};

/// A product that another one shows by a mapped item (ISO 10303-43).
struct MappedProduct {
  Index item = NO_RECORD;
  ProductId product = NO_PRODUCT;
  bool closes_circle = false;  ///< as that of Usage
};

/// Another product's shape representation that a relationship without a placement ties to a
/// product's own: that shape is where this one is.
struct TiedShape {
  Index relationship = NO_RECORD;
  Index representation = NO_RECORD;
};

/// A product definition that has a shape or a place in the structure. What has neither is none of
/// ours: materials, documents, drawing views, process plans.
struct Product {
  Index definition = NO_RECORD;
  Index formation = NO_RECORD;  ///< its version; NO_RECORD where the definition names none
  Index product = NO_RECORD;    ///< the PRODUCT; several definitions may share one
  // Texts are UTF-8, decoded, and empty where the file has none.
  std::string id;
  std::string name;
  std::string description;
  std::string version;  ///< the formation's id
  std::vector<Index> shapes;
  std::vector<ShapeLink> links;
  /// Those of the links, each once, in order of the links.
  std::vector<Index> representations;
  /// Further shape representations that relationships without a placement tie to those, and the
  /// relationships. One that a link gives to another product is not followed.
  std::vector<Index> tied;
  std::vector<Index> ties;
  /// What such relationships tie to them and links give to other products, an entry for each
  /// relationship.
  std::vector<TiedShape> tied_to_others;
  /// Whether its representations have items of their own beside placements and what is mapped from
  /// other products' representations.
  bool has_bodies = false;
  /// What its representations show of other products' representations by mapped items, without a
  /// usage that says so. Such products have no components.
  std::vector<MappedProduct> mapped;
  /// The product in whose file it stands, where it has none of its own: no usage uses it, and it is
  /// either a piece of that one's shape, which is the first that shows it so, or another view of
  /// it: a definition of the same version that has no components and no representations but that
  /// one's. NO_PRODUCT for all others.
  ProductId stands_with = NO_PRODUCT;
  /// Positions of the usages whose assembly it is, in the order of the file.
  std::vector<std::uint32_t> usages;
};

/// A component in an assembly: a NEXT_ASSEMBLY_USAGE_OCCURRENCE or its kin (ISO 10303-44).
struct Usage {
  Index record = NO_RECORD;
  ProductId assembly = NO_PRODUCT;
  ProductId component = NO_PRODUCT;
  // Texts are UTF-8, decoded, and empty where the file has none.
  std::string id;
  std::string name;
  std::string description;
  std::string designator;
  /// How many components it stands for; one usage in all but bills of materials.
  double quantity = 1;
  /// Whether the component leads back to the assembly. Without such usages no walk from assemblies
  /// to components comes to a product twice on one path.
  bool closes_circle = false;
  std::vector<Index> shapes;  ///< the PRODUCT_DEFINITION_SHAPE records of the usage
  std::vector<ShapeLink> links;
  /// What places it: CONTEXT_DEPENDENT_SHAPE_REPRESENTATION records of its shapes, and the
  /// relationships that they name.
  std::vector<Index> placements;
  std::vector<Index> relationships;
};

/// Plain data; positions of records are those in the instances that it was made from.
struct Products {
  std::vector<Product> products;  ///< by position of the definition in the file
  std::vector<Usage> usages;      ///< by position in the file
  /// What speaks of a component below an assembly, at any level: a
  /// SPECIFIED_HIGHER_USAGE_OCCURRENCE, a PROMISSORY_USAGE_OCCURRENCE. They make no component of
  /// it, and belong to their assembly.
  std::vector<Usage> deeper;
  /// The products that no usage uses and that stand with no other, those apart that close circles;
  /// ascending. Every product can be reached from them, other views apart, and there is at least
  /// one where there are products.
  std::vector<ProductId> tops;

  /// The product with that definition; NO_PRODUCT for none.
  ProductId find(Index definition) const;
  bool is_assembly(ProductId product) const;  ///< has components, closed circles apart
};

/// Finds them. Nothing is an error: a usage or shape that does not lead where it should is passed
/// over. Linear in the records that carry structure.
Products find_products(const Instances& instances);

/// By product: whether a usage that closes no circle makes it a component.
std::vector<bool> used_products(const Products& all);

/// What `record`'s types say about it, for those who place records.
bool is_placement(const Instances& instances, Index record);
bool is_shape_representation(const Instances& instances, Index record);

}  // namespace Kessel
