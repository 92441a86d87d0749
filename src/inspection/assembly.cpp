#include "inspection/assembly.h"

#include <utility>

#include "external/targets.h"
#include "findings/named_errors.h"
#include "inspection/walk.h"
#include "products/file_names.h"

namespace Kessel {

namespace {

PartRole role_of(const Product& product) {
  if (product.usages.empty()) return PartRole::part;
  return product.has_bodies ? PartRole::assembly_with_bodies : PartRole::assembly;
}

/// Turns lists of components with repeats into lists with counts.
class ComponentCounter {
 public:
  explicit ComponentCounter(const Products& all) : all_(all), places_(all.products.size(), 0) {}

  std::vector<PartUse> count(const Product& product) {
    std::vector<PartUse> uses;
    for (const std::uint32_t usage : product.usages) {
      const ProductId component = all_.usages[usage].component;
      std::size_t& place = places_[component];
      if (place == 0) {
        uses.push_back({component, 0, all_.usages[usage].closes_circle});
        place = uses.size();
      }
      ++uses[place - 1].count;
    }
    for (const PartUse& use : uses) places_[use.part] = 0;
    return uses;
  }

 private:
  const Products& all_;
  std::vector<std::size_t> places_;  // by product: where it stands in the list, from 1; 0: nowhere
};

/// The products that a split gives files, the root's first; NO_PRODUCT for a root that only holds
/// several tops together. The classic style splits nothing that gives fewer than two.
std::vector<ProductId> products_with_files(const Products& all, AssemblyStyle style) {
  const ProductId root = all.tops.size() == 1 ? all.tops.front() : NO_PRODUCT;
  std::vector<ProductId> with_files{root};
  for (ProductId product = 0; product < all.products.size(); ++product) {
    const bool has_none =
        style != AssemblyStyle::classic && all.products[product].stands_with != NO_PRODUCT;
    const bool has_file = !has_none && (style != AssemblyStyle::lean || !all.is_assembly(product));
    if (product != root && has_file) with_files.push_back(product);
  }
  if (style == AssemblyStyle::classic && with_files.size() < 2) return {};
  return with_files;
}

}  // namespace

Assembly assembly_of(const InspectedFile& file, const Options& options) {
  const Products& all = file.products;
  Assembly assembly;
  ComponentCounter counter(all);
  for (const Product& product : all.products) {
    PartInfo& info = assembly.parts.emplace_back();
    info.record = file.instances.number(product.definition);
    info.id = product.id;
    info.name = product.name;
    info.description = product.description;
    info.role = role_of(product);
    info.components = counter.count(product);
  }
  for (const ExternalReference& reference : file.references) {
    const ProductId product =
        reference.definition == NO_RECORD ? NO_PRODUCT : all.find(reference.definition);
    if (product == NO_PRODUCT || !assembly.parts[product].external_file.empty()) continue;
    assembly.parts[product].external_file = find_target(file.folder, reference).name->name;
  }
  if (all.tops.size() > 1) {
    PartInfo& root = assembly.parts.emplace_back();
    root.role = PartRole::assembly;
    for (const ProductId top : all.tops) root.components.push_back({top, 1, false});
  }
  if (!all.tops.empty()) {
    const std::vector<ProductId> named = products_with_files(all, options.assemblies);
    std::vector<std::filesystem::path> names =
        file_names(file.instances, all, named, options.names, names_of_targets(file.references));
    for (std::size_t i = 0; i < named.size(); ++i) {
      const bool is_generated = named[i] == NO_PRODUCT;
      (is_generated ? assembly.parts.back() : assembly.parts[named[i]]).file = std::move(names[i]);
    }
    assembly.roots.push_back(all.tops.size() > 1 ? all.products.size() : all.tops.front());
  }
  complete(assembly);
  return assembly;
}

Assembly read_assembly(const std::filesystem::path& in, const Options& options) {
  return with_named_errors(in, [&] { return assembly_of(InspectedFile(in, options), options); });
}

}  // namespace Kessel
