// Where the structure begins, and which usages go round in circles.
#include "products/structure.h"

namespace Kessel {

namespace {

enum class State : std::uint8_t { unseen, open, done };

/// Walks from products to components, depth first.
class Walk {
 public:
  explicit Walk(Products& products) : all_(products), states_(products.products.size()) {}

  bool has_seen(ProductId product) const { return states_[product] != State::unseen; }

  void from(ProductId top) {
    open(top);
    while (!path_.empty()) {
      Step& step = path_.back();
      Product& product = all_.products[step.product];
      const std::size_t next = step.next++;
      if (next < product.usages.size()) {
        Usage& usage = all_.usages[product.usages[next]];
        follow(usage.component, usage.closes_circle);
      } else if (next < product.usages.size() + product.mapped.size()) {
        MappedProduct& mapped = product.mapped[next - product.usages.size()];
        follow(mapped.product, mapped.closes_circle);
      } else {
        states_[step.product] = State::done;
        path_.pop_back();
      }
    }
  }

 private:
  struct Step {
    ProductId product;
    std::size_t next = 0;
  };
  void follow(ProductId component, bool& closes_circle) {
    if (states_[component] == State::open) closes_circle = true;
    if (states_[component] == State::unseen) open(component);
  }
  void open(ProductId product) {
    states_[product] = State::open;
    path_.push_back({product});
  }

  Products& all_;
  std::vector<State> states_;
  std::vector<Step> path_;
};

std::vector<bool> used_products(const Products& all) {
  std::vector<bool> used(all.products.size());
  for (const Usage& usage : all.usages) {
    if (!usage.closes_circle) used[usage.component] = true;
  }
  return used;
}

/// Fills shown_by.
void find_shown(Products& all, const std::vector<bool>& used) {
  for (Product& product : all.products) product.shown_by = NO_PRODUCT;
  for (ProductId product = 0; product < all.products.size(); ++product) {
    for (const MappedProduct& mapped : all.products[product].mapped) {
      ProductId& shown_by = all.products[mapped.product].shown_by;
      const bool is_first = shown_by == NO_PRODUCT && !used[mapped.product];
      if (is_first && !mapped.closes_circle) shown_by = product;
    }
  }
}

/// The products that are neither used nor shown, ascending.
std::vector<ProductId> highest(Products& all) {
  const std::vector<bool> used = used_products(all);
  find_shown(all, used);
  std::vector<ProductId> some;
  for (ProductId product = 0; product < all.products.size(); ++product) {
    const bool is_shown = all.products[product].shown_by != NO_PRODUCT;
    if (!used[product] && !is_shown) some.push_back(product);
  }
  return some;
}

}  // namespace

/// Products that no top leads to go round in circles, each of which is entered at its first product
/// in the order of the file.
void find_tops(Products& all) {
  Walk walk(all);
  for (const ProductId product : highest(all)) walk.from(product);
  for (ProductId product = 0; product < all.products.size(); ++product) {
    if (!walk.has_seen(product)) walk.from(product);
  }
  all.tops = highest(all);
}

}  // namespace Kessel
