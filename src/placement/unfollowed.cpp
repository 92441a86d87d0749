// Warns of what readers do not follow into another file.
#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "placement/placing.h"
#include "placement/types_in.h"

namespace Kessel {

namespace {

constexpr Keywords::Row MAPPED_ITEMS[] = {{Keywords::Match::exactly, "MAPPED_ITEM"}};

/// What shows components beside their usages. Readers look a component's file up for a usage that
/// has a place; where a usage has none, it is given that of a mapped item or a relationship.
class ShownBesides {
 public:
  explicit ShownBesides(Placing& placing)
      : placing_(placing), is_mapped_(types_in(MAPPED_ITEMS, placing.instances.types())) {}

  void warn_of_all() {
    for (ProductId id = 0; id < placing_.products.products.size(); ++id) find(id);
    for (const auto& [relationship, file] : ties_) {
      if (!placing_ties_.contains(relationship)) found_.push_back({relationship, file});
    }
    std::sort(found_.begin(), found_.end(), [](const Shown& a, const Shown& b) {
      return a.record != b.record ? a.record < b.record : a.file < b.file;
    });
    for (const Shown& shown : found_) {
      warn(PlacementWarning::Kind::shown_besides, shown.record, shown.file);
    }
    warn_of_styles();
  }

 private:
  struct Shown {
    Index record;
    FileId file;
  };

  void warn(PlacementWarning::Kind kind, Index record, FileId file) {
    placing_.placement.warnings.push_back({kind, record, file});
  }

  void find(ProductId id) {
    const Product& product = placing_.products.products[id];
    file_ = placing_.placement.file_of[id];
    unplaced_.clear();
    placed_.reset();
    for (const std::uint32_t position : product.usages) {
      const Usage& usage = placing_.products.usages[position];
      if (!usage.closes_circle && usage.placements.empty()) ++unplaced_[usage.component];
    }
    for (const auto* list : {&product.representations, &product.tied}) {
      for (const Index representation : *list) {
        if (placing_.stands.has(representation, file_)) find_mapped(product, representation);
      }
    }
    for (const TiedShape& tied : product.tied_to_others) find_tied(tied);
  }

  /// Usages that have a place, by an end of their transformation and by their component.
  using Placed = std::map<std::pair<Index, ProductId>, std::uint32_t>;

  Placed placed_usages(const Product& assembly) const {
    Placed placed;
    for (const std::uint32_t position : assembly.usages) {
      const Usage& usage = placing_.products.usages[position];
      if (usage.closes_circle) continue;
      for (const Index relationship : usage.relationships) {
        for (const Reference transformation : placing_.instances.references(relationship)) {
          const Index record = transformation.record();
          if (record == NO_RECORD) continue;
          if (!placing_.instances.is(record, "ITEM_DEFINED_TRANSFORMATION")) continue;
          Index other = NO_RECORD;
          for (const Reference end : placing_.instances.references(record)) {
            if (end.record() != other) ++placed[{end.record(), usage.component}];
            other = end.record();
          }
        }
      }
    }
    return placed;
  }

  void find_mapped(const Product& product, Index representation) {
    for (const Reference item : placing_.instances.references(representation)) {
      if (item.record() == NO_RECORD || !item.is_listed()) continue;
      if (!is_mapped_[placing_.instances.type(item.record())]) continue;
      for (const Reference map : placing_.instances.references(item.record())) {
        if (map.record() == NO_RECORD) continue;
        if (placing_.instances.is(map.record(), "REPRESENTATION_MAP")) {
          find_mapped(product, item.record(), map.record());
        }
      }
    }
  }

  void find_mapped(const Product& product, Index item, Index map) {
    for (const Reference shown : placing_.instances.references(map)) {
      if (shown.record() == NO_RECORD || !placing_.is_placeholder(shown.record(), file_)) continue;
      mapped_.emplace(item, file_);
      if (!takes_usage(shown.record()) && !repeats_usage(product, item, shown.record())) {
        found_.push_back({item, file_});
      }
    }
  }

  void find_tied(const TiedShape& tied) {
    if (!placing_.is_placeholder(tied.representation, file_)) return;
    ties_.emplace(tied.relationship, file_);
    if (takes_usage(tied.representation)) placing_ties_.insert(tied.relationship);
  }

  /// Whether a usage of the representation's product has no place yet; it has one now.
  bool takes_usage(Index representation) {
    for (const ProductId owner : placing_.classes.owners(representation)) {
      const auto found = unplaced_.find(owner);
      if (found == unplaced_.end() || found->second == 0) continue;
      --found->second;
      return true;
    }
    return false;
  }

  /// Whether the item shows the representation where a usage has its product, and no other item
  /// does. Some systems say places in both ways.
  bool repeats_usage(const Product& product, Index item, Index representation) {
    if (!placed_) placed_ = placed_usages(product);
    for (const ProductId owner : placing_.classes.owners(representation)) {
      for (const Reference target : placing_.instances.references(item)) {
        const auto found = placed_->find({target.record(), owner});
        if (found == placed_->end() || found->second == 0) continue;
        --found->second;
        return true;
      }
    }
    return false;
  }

  /// A style of a mapped item is one of an occurrence, of which a usage knows nothing.
  void warn_of_styles() {
    if (mapped_.empty()) return;
    const TypeSet is_style = types_in(STYLED_ITEMS, placing_.instances.types());
    for (const Index record : placing_.others) {
      if (!is_style[placing_.instances.type(record)]) continue;
      for (const Reference item : placing_.instances.references(record)) {
        const auto found = mapped_.find(item.record());
        if (found == mapped_.end()) continue;
        warn(PlacementWarning::Kind::occurrence_style, record, found->second);
        break;
      }
    }
  }

  Placing& placing_;
  TypeSet is_mapped_;  // by type
  FileId file_ = 0;
  std::unordered_map<ProductId, std::uint32_t> unplaced_;  // usages of the product
  std::optional<Placed> placed_;                           // of the product, once asked for
  std::unordered_map<Index, FileId> mapped_;               // items that show placeholders
  std::unordered_map<Index, FileId> ties_;                 // relationships with placeholders
  std::unordered_set<Index> placing_ties_;                 // those of them that place a usage
  std::vector<Shown> found_;
};

/// Warns of components whose usages mean nothing to readers that do not know the types of their
/// definitions.
void warn_of_definitions(Placing& placing) {
  std::vector<ProductId> linked;
  for (const PlacedFile& file : placing.placement.files) {
    linked.insert(linked.end(), file.links.begin(), file.links.end());
  }
  std::sort(linked.begin(), linked.end());
  linked.erase(std::unique(linked.begin(), linked.end()), linked.end());
  for (const ProductId id : linked) {
    const Index definition = placing.products.products[id].definition;
    const auto& keywords = placing.instances.types().keywords(placing.instances.type(definition));
    const bool is_usual = keywords.size() == 1 &&
                          (keywords.front() == "PRODUCT_DEFINITION" ||
                           keywords.front() == "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS");
    if (is_usual) continue;
    placing.placement.warnings.push_back(
        {PlacementWarning::Kind::unusual_definition, definition, placing.placement.file_of[id]});
  }
}

}  // namespace

void warn_of_unfollowed(Placing& placing) {
  if (placing.placement.files.size() < 2) return;
  ShownBesides(placing).warn_of_all();
  warn_of_definitions(placing);
}

}  // namespace Kessel
