#include "sameness/owners.h"

#include <algorithm>
#include <string_view>

namespace Kessel::Sameness {

namespace {

bool has_in_name(const Instances& instances, Index record, std::string_view word) {
  return instances.types().name(instances.type(record)).find(word) != std::string_view::npos;
}

/// What an item's references lead to and does not belong to the item's product.
bool is_beyond_shape(const Instances& instances, TypeId type) {
  const std::string_view name = instances.types().name(type);
  return name.find("CONTEXT") != std::string_view::npos ||
         name.find("PRODUCT") != std::string_view::npos;
}

class ShapeSearch {
 public:
  ShapeSearch(const Instances& instances, const Fingerprints& fingerprints, Column<Index>& owners,
              std::vector<FurtherOwner>& further, std::uint64_t most_further)
      : instances_(instances),
        fingerprints_(fingerprints),
        owners_(owners),
        further_(further),
        most_further_(most_further),
        reached_by_(instances.size(), NO_RECORD),
        is_root_(instances.size()) {
    for (TypeId type = 0; type < instances.types().size(); ++type) {
      is_beyond_.push_back(is_beyond_shape(instances, type));
    }
  }

  /// Returns false where there are too many further owners.
  bool take_shapes(const Products& products) {
    for (const Product& product : products.products) {
      owners_[product.definition] = product.definition;
      for (const Index representation : product.representations) is_root_[representation] = true;
      for (const Index representation : product.tied) is_root_[representation] = true;
    }
    for (const Product& product : products.products) {
      for (const auto& roots : {product.representations, product.tied}) {
        for (const Index representation : roots) enter(representation, product.definition);
      }
      if (!take_items(product.definition)) return false;
    }
    return true;
  }

 private:
  void enter(Index record, Index owner) {
    if (reached_by_[record] == owner || fingerprints_.is_pure[record]) return;
    reached_by_[record] = owner;
    if (owners_[record] == NO_RECORD) {
      owners_[record] = owner;
    } else {
      further_.push_back({record, owner});
    }
    open_.push_back(record);
  }

  bool take_items(Index owner) {
    while (!open_.empty()) {
      const Index record = open_.back();
      open_.pop_back();
      for (const Reference reference : instances_.references(record)) {
        const Index to = reference.record();
        if (to == NO_RECORD || is_root_[to] || is_beyond_[instances_.type(to)]) continue;
        enter(to, owner);
      }
      if (further_.size() > most_further_) return false;
    }
    return true;
  }

  const Instances& instances_;
  const Fingerprints& fingerprints_;
  Column<Index>& owners_;
  std::vector<FurtherOwner>& further_;
  std::uint64_t most_further_;
  Column<Index> reached_by_;  // the last owner whose search came here
  Column<bool> is_root_;
  std::vector<bool> is_beyond_;
  std::vector<Index> open_;
};

/// An owner, and whether it is the only one.
struct OwnerOfOne {
  Index owner = NO_RECORD;
  bool is_certain = true;
};

/// Versions and products, of which there may be several definitions.
void own_products(const Products& products, Column<Index>& owners, Column<bool>& is_certain) {
  for (const Product& product : products.products) {
    for (const Index record : {product.formation, product.product}) {
      if (record == NO_RECORD) continue;
      if (owners[record] == NO_RECORD) {
        owners[record] = product.definition;
      } else if (owners[record] != product.definition) {
        is_certain[record] = false;
      }
    }
  }
}

/// The owner of the first record that `record` names, a certain one if there is any; of a list's
/// records the one owner of all.
OwnerOfOne owner_from_below(const Instances& instances, const Fingerprints& fingerprints,
                            const Column<Index>& owners, const Column<bool>& is_certain,
                            Index record) {
  OwnerOfOne first;
  OwnerOfOne of_list;
  bool is_mixed = false;
  for (const Reference reference : instances.references(record)) {
    const Index to = reference.record();
    if (to == NO_RECORD || fingerprints.is_pure[to] || owners[to] == NO_RECORD) continue;
    if (reference.is_listed()) {
      is_mixed = is_mixed || (of_list.owner != NO_RECORD && of_list.owner != owners[to]);
      of_list = {owners[to], of_list.is_certain && is_certain[to]};
    } else if (is_certain[to]) {
      return {owners[to], true};
    } else if (first.owner == NO_RECORD) {
      first = {owners[to], false};
    }
  }
  if (first.owner != NO_RECORD) return first;
  // Whether a list is mixed must not hang on who is first either.
  return is_mixed ? OwnerOfOne{NO_RECORD, of_list.is_certain} : of_list;
}

/// A style of an item that several products own is theirs, too, whatever else it names: returns the
/// item, or NO_RECORD for none.
Index share_styles(const Instances& instances, std::vector<FurtherOwner>& further, Index record,
                   std::size_t searched) {
  const auto begin = further.begin();
  const auto end = further.begin() + static_cast<std::ptrdiff_t>(searched);
  for (const Reference reference : instances.references(record)) {
    const FurtherOwner key{reference.record(), 0};
    const auto found = std::lower_bound(begin, end, key);
    if (found == end || found->record != key.record) continue;
    std::vector<FurtherOwner> of_style;
    for (auto i = found; i != end && i->record == key.record; ++i) {
      of_style.push_back({record, i->owner});
    }
    further.insert(further.end(), of_style.begin(), of_style.end());
    return key.record;
  }
  return NO_RECORD;
}

}  // namespace

Owners::Owners(const Instances& instances, const Fingerprints& fingerprints, const Order& order,
               const Products& products, std::uint64_t most_further)
    : owners_(instances.size(), NO_RECORD), is_certain_(instances.size(), true) {
  ShapeSearch search(instances, fingerprints, owners_, further_, most_further);
  has_too_many_ = !search.take_shapes(products);
  if (has_too_many_) further_.clear();
  std::sort(further_.begin(), further_.end());
  const std::size_t searched = further_.size();
  for (const FurtherOwner& further : further_) is_certain_[further.record] = false;
  own_products(products, owners_, is_certain_);
  for (const Index record : order.records) {
    if (owners_[record] != NO_RECORD || fingerprints.is_pure[record]) continue;
    const OwnerOfOne owner =
        owner_from_below(instances, fingerprints, owners_, is_certain_, record);
    owners_[record] = owner.owner;
    is_certain_[record] = owner.is_certain;
    if (searched != 0 && has_in_name(instances, record, "STYLED_ITEM")) {
      const Index item = share_styles(instances, further_, record, searched);
      if (item == NO_RECORD) continue;
      owners_[record] = owners_[item];
      is_certain_[record] = false;
    }
  }
  std::sort(further_.begin(), further_.end());
  // What a value says belongs to the first that needs it.
  for (std::size_t i = order.records.size(); i-- > 0;) {
    const Index record = order.records[i];
    if (owners_[record] == NO_RECORD) continue;
    for (const Reference reference : instances.references(record)) {
      const Index to = reference.record();
      if (to != NO_RECORD && fingerprints.is_pure[to] && owners_[to] == NO_RECORD) {
        owners_[to] = owners_[record];
      }
    }
  }
}

}  // namespace Kessel::Sameness
