// Which files there are.
#include <unordered_set>

#include "placement/placement.h"

namespace Kessel {

namespace {

/// The components of `file`'s products that have files of their own.
void add_links(const Products& products, const FilePlan& plan, FileId id, PlacedFile& file) {
  std::unordered_set<ProductId> linked;
  const auto link = [&](ProductId component) {
    if (plan.file_of[component] == id) return;
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

/// Gives what stands with other products to the files of those.
void give_others(const Products& products, FilePlan& plan) {
  std::vector<bool> is_placed(products.products.size());
  for (const PlacedFile& file : plan.files) {
    for (const ProductId product : file.products) is_placed[product] = true;
  }
  std::vector<ProductId> path;
  for (ProductId product = 0; product < is_placed.size(); ++product) {
    ProductId at = product;
    for (; !is_placed[at]; at = products.products[at].stands_with) path.push_back(at);
    for (; !path.empty(); path.pop_back()) {
      plan.file_of[path.back()] = plan.file_of[at];
      plan.files[plan.file_of[at]].products.push_back(path.back());
      is_placed[path.back()] = true;
    }
  }
}

void link_all(const Products& products, FilePlan& plan) {
  for (FileId id = 0; id < plan.files.size(); ++id) {
    if (plan.files[id].body == NO_RECORD) add_links(products, plan, id, plan.files[id]);
  }
}

/// By product: whether it is `part` or below that, as a component or by a mapped item, or stands
/// with such a one.
std::vector<bool> with_all_below(const Products& products, ProductId part) {
  std::vector<bool> is_below(products.products.size());
  std::vector<ProductId> open;
  const auto enter = [&](ProductId product) {
    if (!is_below[product]) open.push_back(product);
    is_below[product] = true;
  };
  enter(part);
  while (!open.empty()) {
    const Product& product = products.products[open.back()];
    open.pop_back();
    for (const std::uint32_t usage : product.usages) {
      if (!products.usages[usage].closes_circle) enter(products.usages[usage].component);
    }
    for (const MappedProduct& mapped : product.mapped) enter(mapped.product);
  }
  for (ProductId product = 0; product < is_below.size(); ++product) {
    const ProductId other = products.products[product].stands_with;
    if (other != NO_PRODUCT && is_below[other]) is_below[product] = true;
  }
  return is_below;
}

/// A first file for all that is not asked for.
FilePlan plan_of_others(const Products& products) {
  FilePlan plan;
  plan.keeps_others_out = true;
  plan.files.resize(1);
  if (products.tops.size() == 1) plan.files.front().top = products.tops.front();
  plan.file_of.resize(products.products.size());
  return plan;
}

}  // namespace

FilePlan plan_split(const Products& products, AssemblyStyle style) {
  const auto count = static_cast<ProductId>(products.products.size());
  const bool has_one_top = products.tops.size() == 1;
  FilePlan plan;
  plan.files.resize(1);
  PlacedFile& root = plan.files.front();
  if (has_one_top) root.top = products.tops.front();
  plan.file_of.resize(count);
  for (ProductId product = 0; product < count; ++product) {
    const bool in_root = style == AssemblyStyle::nested
                             ? product == plan.files.front().top
                             : products.is_assembly(product) || product == plan.files.front().top;
    if (in_root) {
      plan.files.front().products.push_back(product);
      continue;
    }
    if (products.products[product].stands_with != NO_PRODUCT) continue;
    plan.file_of[product] = static_cast<FileId>(plan.files.size());
    plan.files.push_back({{product}, product, {}});
  }
  give_others(products, plan);
  link_all(products, plan);
  return plan;
}

FilePlan plan_extraction(const Products& products, ProductId part) {
  FilePlan plan = plan_of_others(products);
  const bool is_whole = plan.files.front().top == part;
  if (!is_whole) plan.files.push_back({{}, part, {}});
  const std::vector<bool> is_below = with_all_below(products, part);
  for (ProductId product = 0; product < is_below.size(); ++product) {
    if (is_below[product] && !is_whole) plan.file_of[product] = 1;
    plan.files[plan.file_of[product]].products.push_back(product);
  }
  link_all(products, plan);
  return plan;
}

FilePlan plan_bodies(const Products& products, ProductId part, std::span<const Index> bodies) {
  FilePlan plan = plan_of_others(products);
  for (ProductId product = 0; product < products.products.size(); ++product) {
    if (product != part) plan.files.front().products.push_back(product);
  }
  for (const Index body : bodies) plan.files.push_back({{part}, part, {}, body});
  link_all(products, plan);
  return plan;
}

}  // namespace Kessel
