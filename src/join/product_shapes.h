// Which definition has which shape, in one file.
#pragma once

#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "instances/instances.h"

namespace Kessel {

/// What ties a definition to a representation of its shape (ISO 10303-41): the shape definition
/// representation and the product definition shape between them.
struct ShapeLink {
  Index definition = NO_RECORD;
  Index definition_shape = NO_RECORD;
  Index link = NO_RECORD;
  Index representation = NO_RECORD;
};

/// Whether the record is a PRODUCT_DEFINITION, with documents or without.
bool is_product_definition(const Instances& instances, Index record);
/// The version and the product of a definition; NO_RECORD where it does not refer to one.
Index formation_of(const Instances& instances, Index definition);
Index product_of(const Instances& instances, Index definition);
/// The id of a definition's product as it stands, with its apostrophes; empty where there is none.
std::string_view product_id(const Instances& instances, Index definition);

class ProductShapes {
 public:
  /// Looks at `instances`, which must outlive it.
  explicit ProductShapes(const Instances& instances);

  /// The shapes of `definition`, in the order of the file.
  std::span<const ShapeLink> of(Index definition) const;
  /// The definition of which `representation` is a shape; NO_RECORD for none.
  Index definition_of(Index representation) const;
  /// The definitions that are nobody's component: those with a shape, or all where none has one.
  std::vector<Index> tops() const;

 private:
  const Instances& instances_;
  std::vector<ShapeLink> links_;        // by definition
  std::map<Index, Index> definitions_;  // by representation
};

}  // namespace Kessel
