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
      const std::vector<std::uint32_t>& usages = all_.products[step.product].usages;
      if (step.next == usages.size()) {
        states_[step.product] = State::done;
        path_.pop_back();
        continue;
      }
      Usage& usage = all_.usages[usages[step.next++]];
      if (states_[usage.component] == State::open) usage.closes_circle = true;
      if (states_[usage.component] == State::unseen) open(usage.component);
    }
  }

 private:
  struct Step {
    ProductId product;
    std::size_t next = 0;
  };
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

}  // namespace

/// Products that no top leads to go round in circles, each of which is entered at its first product
/// in the order of the file.
void find_tops(Products& all) {
  Walk walk(all);
  const std::vector<bool> used = used_products(all);
  const auto count = static_cast<ProductId>(all.products.size());
  for (ProductId product = 0; product < count; ++product) {
    if (!used[product]) walk.from(product);
  }
  for (ProductId product = 0; product < count; ++product) {
    if (!walk.has_seen(product)) walk.from(product);
  }
  const std::vector<bool> still_used = used_products(all);
  for (ProductId product = 0; product < count; ++product) {
    if (!still_used[product]) all.tops.push_back(product);
  }
}

}  // namespace Kessel
