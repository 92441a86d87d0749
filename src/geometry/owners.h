// Which product a representation shows.
#pragma once

#include <unordered_map>
#include <vector>

#include "products/products.h"

namespace Kessel::Geometry {

/// The products of a file by their representations, tied ones too.
class Owners {
 public:
  explicit Owners(const Products& products);

  const Products& products() const { return products_; }

  /// The only product that a representation shows; NO_PRODUCT for none and several.
  ProductId of(Index representation) const;

  /// The representations that show the same as `representation`: those of its product, or itself.
  std::vector<Index> shown_with(Index representation) const;

  /// Those of a product.
  std::vector<Index> representations(ProductId product) const;

  /// Whether `assembly` has a usage of `component`.
  bool uses(ProductId assembly, ProductId component) const;

 private:
  const Products& products_;
  std::unordered_map<Index, ProductId> owners_;
};

}  // namespace Kessel::Geometry
