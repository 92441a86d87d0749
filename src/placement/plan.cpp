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

/// Gives what is only shown by other products to the files of those.
void give_shown(const Products& products, Placement& placement) {
  std::vector<bool> is_placed(products.products.size());
  for (const PlacedFile& file : placement.files) {
    for (const ProductId product : file.products) is_placed[product] = true;
  }
  std::vector<ProductId> path;
  for (ProductId product = 0; product < is_placed.size(); ++product) {
    ProductId at = product;
    for (; !is_placed[at]; at = products.products[at].shown_by) path.push_back(at);
    for (; !path.empty(); path.pop_back()) {
      placement.file_of[path.back()] = placement.file_of[at];
      placement.files[placement.file_of[at]].products.push_back(path.back());
      is_placed[path.back()] = true;
    }
  }
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
    if (products.products[product].shown_by != NO_PRODUCT) continue;
    placement.file_of[product] = static_cast<FileId>(placement.files.size());
    placement.files.push_back({{product}, product, {}});
  }
  give_shown(products, placement);
  for (FileId id = 0; id < placement.files.size(); ++id) {
    add_links(products, placement, id, placement.files[id]);
  }
}

}  // namespace Kessel
