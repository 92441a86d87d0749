// Where the structure begins, and which usages go round in circles.
#include <algorithm>
#include <unordered_map>

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

/// What is only shown by others stands with the first of those.
void find_shown(Products& all, const std::vector<bool>& used) {
  for (Product& product : all.products) product.stands_with = NO_PRODUCT;
  for (ProductId product = 0; product < all.products.size(); ++product) {
    for (const MappedProduct& mapped : all.products[product].mapped) {
      ProductId& stands_with = all.products[mapped.product].stands_with;
      const bool is_first = stands_with == NO_PRODUCT && !used[mapped.product];
      if (is_first && !mapped.closes_circle) stands_with = product;
    }
  }
}

bool has(const std::vector<Index>& representations, Index one) {
  return std::find(representations.begin(), representations.end(), one) != representations.end();
}

bool shows_all_of(const Product& product, const Product& other) {
  return std::all_of(other.representations.begin(), other.representations.end(), [&](Index one) {
    return has(product.representations, one) || has(product.tied, one);
  });
}

/// Another view of a product stands with the definition that the structure names, else with that
/// which shows the most.
void find_views(Products& all, const std::vector<bool>& used) {
  std::unordered_map<Index, std::vector<ProductId>> named;  // by PRODUCT
  std::vector<ProductId> views;
  for (ProductId id = 0; id < all.products.size(); ++id) {
    const Product& product = all.products[id];
    if (product.product == NO_RECORD || product.stands_with != NO_PRODUCT) continue;
    const bool is_named = used[id] || !product.usages.empty() || product.representations.empty();
    if (is_named) {
      named[product.product].push_back(id);
    } else {
      views.push_back(id);
    }
  }
  std::stable_sort(views.begin(), views.end(), [&](ProductId a, ProductId b) {
    return all.products[a].representations.size() > all.products[b].representations.size();
  });
  for (const ProductId view : views) {
    Product& product = all.products[view];
    std::vector<ProductId>& others = named[product.product];
    const auto other = std::find_if(others.begin(), others.end(), [&](ProductId id) {
      return shows_all_of(all.products[id], product);
    });
    if (other != others.end()) {
      product.stands_with = *other;
    } else {
      others.push_back(view);
    }
  }
}

/// The products that are not used and stand with no other, ascending.
std::vector<ProductId> highest(Products& all) {
  const std::vector<bool> used = used_products(all);
  find_shown(all, used);
  find_views(all, used);
  std::vector<ProductId> some;
  for (ProductId product = 0; product < all.products.size(); ++product) {
    if (!used[product] && all.products[product].stands_with == NO_PRODUCT) some.push_back(product);
  }
  return some;
}

}  // namespace

std::vector<bool> used_products(const Products& all) {
  std::vector<bool> used(all.products.size());
  for (const Usage& usage : all.usages) {
    if (!usage.closes_circle) used[usage.component] = true;
  }
  return used;
}

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
