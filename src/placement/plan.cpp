// Which files there are.
#include <unordered_set>

#include "placement/placing.h"

namespace Kessel {

namespace {

/// The components of `file`'s products that have files of their own.
void add_links(const Products& products, const Placement& placement, FileId id, PlacedFile& file) {
  std::unordered_set<ProductId> linked;
  const auto link = [&](ProductId component) {
    if (placement.file_of[component] == id) return;
    if (linked.insert(component).second) file.links.push_back(component);
  };
  for (const ProductId product : file.products) {
    for (const std::uint32_t usage : products.products[product].usages) {
      if (!products.usages[usage].closes_circle) link(products.usages[usage].component);
    }
  }
  if (id != 0) return;
  for (const ProductId top : products.tops) link(top);
}

}  // namespace

void plan_files(const Products& products, AssemblyStyle style, Placement& placement) {
  const auto count = static_cast<ProductId>(products.products.size());
  const bool has_one_top = products.tops.size() == 1;
  placement.files.resize(1);
  PlacedFile& root = placement.files.front();
  if (has_one_top) root.top = products.tops.front();
  placement.file_of.resize(count);
  for (ProductId product = 0; product < count; ++product) {
    const bool in_root =
        style == AssemblyStyle::nested
            ? product == placement.files.front().top
            : products.is_assembly(product) || product == placement.files.front().top;
    if (in_root) {
      placement.files.front().products.push_back(product);
      continue;
    }
    placement.file_of[product] = static_cast<FileId>(placement.files.size());
    placement.files.push_back({{product}, product, {}});
  }
  for (FileId id = 0; id < placement.files.size(); ++id) {
    add_links(products, placement, id, placement.files[id]);
  }
}

}  // namespace Kessel
