// Which representations show a product.
#include <algorithm>
#include <unordered_set>

#include "products/parameter_reader.h"
#include "products/structure.h"

namespace Kessel {

namespace {

struct Tie {
  Index relationship;
  Index other;
};

using Ties = std::unordered_map<Index, std::vector<Tie>>;

/// The relationships between shape representations that say "these are one shape": those without a
/// transformation that place no component.
Ties find_ties(const Instances& instances, const Products& products) {
  std::unordered_set<Index> placing;
  for (const Usage& usage : products.usages) {
    placing.insert(usage.relationships.begin(), usage.relationships.end());
  }
  Ties ties;
  for (const Index record : instances.kept()) {
    const auto& keywords = instances.types().keywords(instances.type(record));
    const bool relates = std::any_of(keywords.begin(), keywords.end(), [](std::string_view k) {
      return k.ends_with("REPRESENTATION_RELATIONSHIP");
    });
    if (!relates || placing.contains(record)) continue;
    if (instances.is(record, "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION")) continue;
    const ParameterReader parameters(instances, record, "REPRESENTATION_RELATIONSHIP");
    const Index first = parameters.record(2);
    const Index second = parameters.record(3);
    if (first == NO_RECORD || second == NO_RECORD || first == second) continue;
    if (!is_shape_representation(instances, first)) continue;
    if (!is_shape_representation(instances, second)) continue;
    ties[first].push_back({record, second});
    ties[second].push_back({record, first});
  }
  return ties;
}

/// The products that links give a representation to. Views of one PRODUCT share what they have.
class Owners {
 public:
  explicit Owners(const Products& products)
      : products_(products), is_named_(products.products.size()) {
    for (const Usage& usage : products.usages) {
      is_named_[usage.assembly] = is_named_[usage.component] = true;
    }
    for (ProductId id = 0; id < products.products.size(); ++id) {
      for (const ShapeLink& link : products.products[id].links) {
        std::vector<ProductId>& owners = owners_[link.representation];
        if (owners.empty() || owners.back() != id) owners.push_back(id);
      }
    }
  }

  /// The only product of a representation; NO_PRODUCT for none and several.
  ProductId only(Index representation) const {
    const std::vector<ProductId>& owners = of(representation);
    return owners.size() == 1 ? owners.front() : NO_PRODUCT;
  }
  bool is_another(Index representation, ProductId product) const {
    const std::vector<ProductId>& owners = of(representation);
    return !owners.empty() && owners != std::vector<ProductId>{product};
  }
  /// Whether it is another's, views of the same PRODUCT apart that the structure does not name.
  bool is_of_others(Index representation, ProductId product) const {
    const std::vector<ProductId>& owners = of(representation);
    const Index same = products_.products[product].product;
    return std::any_of(owners.begin(), owners.end(), [&](ProductId owner) {
      const bool is_view = same != NO_RECORD && products_.products[owner].product == same;
      return owner != product && (!is_view || is_named_[owner]);
    });
  }

 private:
  const std::vector<ProductId>& of(Index representation) const {
    static const std::vector<ProductId> NONE;
    const auto found = owners_.find(representation);
    return found == owners_.end() ? NONE : found->second;
  }

  const Products& products_;
  std::vector<bool> is_named_;  // by usages
  std::unordered_map<Index, std::vector<ProductId>> owners_;
};

/// Who has which representations by ties.
class Tied {
 public:
  Tied(const Ties& ties, const Owners& owners, Products& products)
      : ties_(ties), owners_(owners), products_(products) {}

  /// What a product and one below it are tied to is the component's: the assembly's tie says that
  /// this shape is where its own is.
  void find_all() {
    const auto no_one = [](Index) { return false; };
    for (ProductId id = 0; id < products_.products.size(); ++id) follow(id, no_one);
    for (ProductId id = 0; id < products_.products.size(); ++id) {
      for (const Index one : products_.products[id].tied) having_[one].push_back(id);
    }
    for (ProductId id = 0; id < products_.products.size(); ++id) {
      Product& product = products_.products[id];
      const auto is_below = [&](Index one) { return is_of_component(id, one); };
      if (std::none_of(product.tied.begin(), product.tied.end(), is_below)) continue;
      for (auto* list : {&product.tied, &product.ties}) list->clear();
      product.tied_to_others.clear();
      follow(id, is_below);
    }
  }

 private:
  /// Goes on from the product's representations, but not to what `is_not_its_own` says.
  template <class Test>
  void follow(ProductId id, Test is_not_its_own) {
    Product& product = products_.products[id];
    std::vector<Index> open = product.representations;
    std::unordered_set<Index> seen(open.begin(), open.end());
    std::unordered_set<Index> taken;
    while (!open.empty()) {
      const auto found = ties_.find(open.back());
      open.pop_back();
      if (found == ties_.end()) continue;
      for (const Tie& tie : found->second) {
        if (!seen.contains(tie.other)) {
          if (owners_.is_of_others(tie.other, id) || is_not_its_own(tie.other)) {
            product.tied_to_others.push_back({tie.relationship, tie.other});
            continue;
          }
          seen.insert(tie.other);
          open.push_back(tie.other);
          product.tied.push_back(tie.other);
        }
        if (taken.insert(tie.relationship).second) product.ties.push_back(tie.relationship);
      }
    }
  }

  bool is_of_component(ProductId assembly, Index tied) const {
    const std::vector<ProductId>& having = having_.find(tied)->second;
    if (having.size() == 1) return false;
    std::vector<ProductId> open{assembly};
    std::unordered_set<ProductId> seen(open.begin(), open.end());
    while (!open.empty()) {
      const ProductId id = open.back();
      open.pop_back();
      if (id != assembly && std::find(having.begin(), having.end(), id) != having.end()) {
        return true;
      }
      for (const std::uint32_t usage : products_.products[id].usages) {
        const ProductId component = products_.usages[usage].component;
        if (seen.insert(component).second) open.push_back(component);
      }
    }
    return false;
  }

  const Ties& ties_;
  const Owners& owners_;
  Products& products_;
  std::unordered_map<Index, std::vector<ProductId>> having_;
};

/// The representation of another product that a mapped item shows; NO_RECORD for none.
Index mapped_from_another(const Instances& instances, const Owners& owners, ProductId product,
                          Index item) {
  if (!instances.is(item, "MAPPED_ITEM")) return NO_RECORD;
  for (const Reference map : instances.references(item)) {
    if (map.record() == NO_RECORD || !instances.is(map.record(), "REPRESENTATION_MAP")) continue;
    for (const Reference mapped : instances.references(map.record())) {
      if (mapped.record() != NO_RECORD && owners.is_another(mapped.record(), product)) {
        return mapped.record();
      }
    }
  }
  return NO_RECORD;
}

bool has_body(const Instances& instances, const Owners& owners, ProductId product,
              Index representation) {
  const auto items = instances.references(representation);
  return std::any_of(items.begin(), items.end(), [&](Reference item) {
    return item.is_listed() && item.record() != NO_RECORD &&
           !is_placement(instances, item.record()) &&
           mapped_from_another(instances, owners, product, item.record()) == NO_RECORD;
  });
}

/// Enters what `product` shows by mapped items of parts that it has no usage of.
void find_mapped(const Instances& instances, const Owners& owners, ProductId id,
                 Products& products) {
  Product& product = products.products[id];
  const auto is_used = [&](ProductId other) {
    return std::any_of(product.usages.begin(), product.usages.end(), [&](std::uint32_t usage) {
      return products.usages[usage].component == other;
    });
  };
  for (const auto* list : {&product.representations, &product.tied}) {
    for (const Index representation : *list) {
      for (const Reference item : instances.references(representation)) {
        if (item.record() == NO_RECORD || !item.is_listed()) continue;
        const Index mapped = mapped_from_another(instances, owners, id, item.record());
        const ProductId other = mapped == NO_RECORD ? NO_PRODUCT : owners.only(mapped);
        if (other == NO_PRODUCT || is_used(other)) continue;
        if (!products.products[other].usages.empty()) continue;
        product.mapped.push_back({item.record(), other});
      }
    }
  }
}

}  // namespace

bool is_placement(const Instances& instances, Index record) {
  constexpr std::string_view PLACEMENTS[] = {"AXIS2_PLACEMENT_3D", "AXIS2_PLACEMENT_2D",
                                             "AXIS1_PLACEMENT", "PLACEMENT"};
  return std::any_of(std::begin(PLACEMENTS), std::end(PLACEMENTS),
                     [&](std::string_view keyword) { return instances.is(record, keyword); });
}

void find_representations(const Instances& instances, Products& products) {
  const Ties ties = find_ties(instances, products);
  const Owners owners(products);
  for (Product& product : products.products) {
    for (const ShapeLink& link : product.links) {
      auto& all = product.representations;
      if (std::find(all.begin(), all.end(), link.representation) == all.end()) {
        all.push_back(link.representation);
      }
    }
  }
  Tied(ties, owners, products).find_all();
  for (ProductId id = 0; id < products.products.size(); ++id) {
    Product& product = products.products[id];
    const auto shows = [&](Index one) { return has_body(instances, owners, id, one); };
    product.has_bodies =
        std::any_of(product.representations.begin(), product.representations.end(), shows) ||
        std::any_of(product.tied.begin(), product.tied.end(), shows);
    find_mapped(instances, owners, id, products);
  }
}

}  // namespace Kessel
