#include "geometry/owners.h"

#include <algorithm>

namespace Kessel::Geometry {

Owners::Owners(const Products& products) : products_(products) {
  for (ProductId id = 0; id < products.products.size(); ++id) {
    for (const Index representation : representations(id)) {
      const auto [place, is_new] = owners_.emplace(representation, id);
      if (!is_new && place->second != id) place->second = NO_PRODUCT;
    }
  }
}

ProductId Owners::of(Index representation) const {
  const auto found = owners_.find(representation);
  return found == owners_.end() ? NO_PRODUCT : found->second;
}

std::vector<Index> Owners::representations(ProductId product) const {
  const Product& one = products_.products[product];
  std::vector<Index> all = one.representations;
  all.insert(all.end(), one.tied.begin(), one.tied.end());
  return all;
}

std::vector<Index> Owners::shown_with(Index representation) const {
  const ProductId product = of(representation);
  return product == NO_PRODUCT ? std::vector<Index>{representation} : representations(product);
}

bool Owners::uses(ProductId assembly, ProductId component) const {
  const auto& usages = products_.products[assembly].usages;
  return std::any_of(usages.begin(), usages.end(), [&](std::uint32_t usage) {
    return products_.usages[usage].component == component;
  });
}

}  // namespace Kessel::Geometry
