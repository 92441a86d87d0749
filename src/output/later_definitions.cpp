#include "output/later_definitions.h"

namespace Kessel {

namespace {

/// By product: whether it may stand with its shape in the file of another one.
std::vector<bool> shown_with_others(const Products& products) {
  std::vector<bool> is_shown(products.products.size());
  for (ProductId id = 0; id < is_shown.size(); ++id) {
    const Product& product = products.products[id];
    if (product.stands_with != NO_PRODUCT) is_shown[id] = true;
    for (const MappedProduct& mapped : product.mapped) is_shown[mapped.product] = true;
  }
  return is_shown;
}

}  // namespace

std::vector<std::vector<Index>> later_definitions(const Products& products,
                                                  const Placement& placement) {
  std::vector<std::vector<Index>> later(placement.files.size());
  if (placement.keeps_others_out) return later;
  const std::vector<bool> is_shown = shown_with_others(products);
  for (ProductId id = 0; id < is_shown.size(); ++id) {
    if (!is_shown[id]) continue;
    const Index definition = products.products[id].definition;
    for (const Stand stand : placement.stands.of(definition)) {
      const ProductId top = placement.files[stand.file()].top;
      if (stand.file() == 0 || stand.role() == Role::stand_in || top == NO_PRODUCT) continue;
      if (definition < products.products[top].definition) later[stand.file()].push_back(definition);
    }
  }
  return later;
}

}  // namespace Kessel
