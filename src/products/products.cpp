// Puts the steps together.
#include "products/products.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "products/parameter_reader.h"
#include "products/structure.h"

namespace Kessel {

namespace {

constexpr std::string_view FORMATION = "PRODUCT_DEFINITION_FORMATION";

/// The definitions of all products, ascending: those with a shown shape, and the ends of usages.
std::vector<Index> definitions_of(const Instances& instances, const Shapes& shapes,
                                  const std::vector<UsageEnds>& ends) {
  std::vector<Index> definitions;
  for (const auto& [subject, of_it] : shapes.of) {
    if (!is_definition(instances, subject)) continue;
    const bool is_shown = std::any_of(of_it.begin(), of_it.end(),
                                      [&](Index shape) { return shapes.links.contains(shape); });
    if (is_shown) definitions.push_back(subject);
  }
  for (const UsageEnds& usage : ends) {
    definitions.push_back(usage.assembly);
    definitions.push_back(usage.component);
  }
  std::sort(definitions.begin(), definitions.end());
  definitions.erase(std::unique(definitions.begin(), definitions.end()), definitions.end());
  return definitions;
}

void name(const Instances& instances, Product& product) {
  product.formation = first_reference(instances, product.definition, FORMATION);
  if (product.formation == NO_RECORD) return;
  product.version = ParameterReader(instances, product.formation, FORMATION).text(0);
  product.product = first_reference(instances, product.formation, "PRODUCT");
  if (product.product == NO_RECORD) return;
  const ParameterReader parameters(instances, product.product, "PRODUCT");
  product.id = parameters.text(0);
  product.name = parameters.text(1);
  product.description = parameters.text(2);
}

void give_shapes(const Shapes& shapes, Product& product) {
  const auto of_it = shapes.of.find(product.definition);
  if (of_it == shapes.of.end()) return;
  product.shapes = of_it->second;
  for (const Index shape : product.shapes) {
    const auto links = shapes.links.find(shape);
    if (links == shapes.links.end()) continue;
    product.links.insert(product.links.end(), links->second.begin(), links->second.end());
  }
}

}  // namespace

bool is_definition(const Instances& instances, Index record) {
  return instances.is(record, "PRODUCT_DEFINITION") ||
         instances.is(record, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS") ||
         first_reference(instances, record, FORMATION) != NO_RECORD;
}

Index first_reference(const Instances& instances, Index record, std::string_view beginning) {
  for (const Reference reference : instances.references(record)) {
    if (reference.record() == NO_RECORD) continue;
    const auto& keywords = instances.types().keywords(instances.type(reference.record()));
    const bool fits = std::any_of(keywords.begin(), keywords.end(),
                                  [&](std::string_view k) { return k.starts_with(beginning); });
    if (fits) return reference.record();
  }
  return NO_RECORD;
}

ProductId Products::find(Index definition) const {
  const auto found = std::lower_bound(
      products.begin(), products.end(), definition,
      [](const Product& product, Index wanted) { return product.definition < wanted; });
  if (found == products.end() || found->definition != definition) return NO_PRODUCT;
  return static_cast<ProductId>(found - products.begin());
}

bool Products::is_assembly(ProductId product) const {
  const auto& own = products[product].usages;
  return std::any_of(own.begin(), own.end(),
                     [&](std::uint32_t usage) { return !usages[usage].closes_circle; });
}

Products find_products(const Instances& instances) {
  const Shapes shapes = find_shapes(instances);
  Products all;
  UsagesWithEnds found = find_usages(instances, shapes);
  for (const Index definition : definitions_of(instances, shapes, found.ends)) {
    Product& product = all.products.emplace_back();
    product.definition = definition;
    name(instances, product);
    give_shapes(shapes, product);
  }
  all.usages = std::move(found.usages);
  for (std::uint32_t i = 0; i < all.usages.size(); ++i) {
    all.usages[i].assembly = all.find(found.ends[i].assembly);
    all.usages[i].component = all.find(found.ends[i].component);
    all.products[all.usages[i].assembly].usages.push_back(i);
  }
  for (std::size_t i = 0; i < found.deeper.size(); ++i) {
    Usage& usage = found.deeper[i];
    usage.assembly = all.find(found.deeper_ends[i].assembly);
    usage.component = all.find(found.deeper_ends[i].component);
    if (usage.assembly != NO_PRODUCT && usage.component != NO_PRODUCT) {
      all.deeper.push_back(std::move(usage));
    }
  }
  find_representations(instances, all);
  find_tops(all);
  return all;
}

}  // namespace Kessel
