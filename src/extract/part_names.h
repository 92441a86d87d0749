// What products are called by those who ask for one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "instances/instances.h"
#include "kessel/extract.h"
#include "products/products.h"

namespace Kessel {

/// Finds products by what people call them (kessel/extract.h).
class PartNames {
 public:
  /// Both must outlive it.
  PartNames(const Instances& instances, const Products& products);

  NamedPart operator[](ProductId product) const;

  /// The product that `what` names. Throws PartError where that is none, or several.
  ProductId find(std::string_view what) const;

 private:
  /// The product's place in the tree that the first path of names leads through.
  struct Place {
    ProductId above = NO_PRODUCT;
    bool is_known = false;
  };
  void find_places();
  std::string number(ProductId product) const;
  std::string label(ProductId product) const;
  bool is_called(ProductId product, std::string_view what) const;
  std::vector<ProductId> called(std::string_view what) const;
  std::vector<ProductId> on_path(std::string_view path) const;
  /// The one that "#12" stands for.
  ProductId numbered(std::string_view what) const;
  std::vector<ProductId> most_similar(std::string_view what) const;
  std::vector<ProductId> components(ProductId product) const;
  [[noreturn]] void refuse(std::string_view what, const std::vector<ProductId>& called) const;
  std::string list(const std::vector<ProductId>& some) const;

  const Instances& instances_;
  const Products& products_;
  std::vector<Place> places_;  // by product
};

}  // namespace Kessel
