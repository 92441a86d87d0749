// Enters what products own, usages, and placeholders of components.
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "exchange/parameters.h"
#include "placement/bodies.h"
#include "placement/placing.h"
#include "products/parameter_reader.h"

namespace Kessel {

namespace {

/// Which products stand below those of a file.
class Below {
 public:
  explicit Below(const Placing& placing)
      : products_(placing.products),
        files_(placing.placement.files),
        direct_(products_.products.size(), NONE),
        any_(products_.products.size(), NONE) {}

  void begin(FileId file) {
    file_ = file;
    is_walked_ = false;
    for (const ProductId component : files_[file].links) direct_[component] = file;
  }

  bool has(ProductId product) {
    if (direct_[product] == file_) return true;  // Fast path, and nearly always the case.
    if (!is_walked_) walk();
    return any_[product] == file_;
  }

 private:
  static constexpr FileId NONE = 0xFFFF'FFFF;

  void walk() {
    is_walked_ = true;
    std::vector<ProductId> open(files_[file_].products);
    while (!open.empty()) {
      const ProductId product = open.back();
      open.pop_back();
      for (const std::uint32_t usage : products_.products[product].usages) {
        const ProductId component = products_.usages[usage].component;
        if (products_.usages[usage].closes_circle || any_[component] == file_) continue;
        any_[component] = file_;
        open.push_back(component);
      }
    }
  }

  const Products& products_;
  const std::vector<PlacedFile>& files_;
  FileId file_ = 0;
  bool is_walked_ = false;
  std::vector<FileId> direct_;  // by product: the last file that it is a link of
  std::vector<FileId> any_;  // by product: the last file that it is below of, where that is known
};

/// Enters what the products of each file lead to.
class OwnRecords {
 public:
  explicit OwnRecords(Placing& placing) : placing_(placing), below_(placing) {}

  /// What is to be brought into `file` later, since it is another product's, goes to `guests`.
  void enter(FileId file, std::vector<Index>& guests) {
    below_.begin(file);
    file_ = file;
    body_ = placing_.placement.files[file].body;
    guests_ = &guests;
    const std::vector<ProductId> ids = with_mapped(placing_.placement.files[file].products);
    for (const ProductId id : ids) enter_definition(placing_.products.products[id]);
    for (const ProductId id : ids) enter_core(placing_.products.products[id]);
    follow(OWNED);
  }

 private:
  /// And the products that these show by mapped items: they stand with both, since no reader knows
  /// how to map what is in another file.
  std::vector<ProductId> with_mapped(std::vector<ProductId> ids) const {
    std::unordered_set<ProductId> seen(ids.begin(), ids.end());
    for (std::size_t i = 0; i < ids.size(); ++i) {
      for (const MappedProduct& mapped : placing_.products.products[ids[i]].mapped) {
        if (i == 0 && !stands_with_body(mapped.item)) continue;
        if (seen.insert(mapped.product).second) ids.push_back(mapped.product);
      }
    }
    return ids;
  }

  void own(Index record, unsigned traits) {
    placing_.classes.give(record, traits);
    if (placing_.stands.add(record, file_, Role::own)) open_.push_back(record);
  }

  void enter_definition(const Product& product) {
    own(product.definition, OWNED | IDENTITY);
    for (const Index shape : product.shapes) own(shape, OWNED | IDENTITY);
    follow(OWNED | IDENTITY);
  }

  void enter_core(const Product& product) {
    for (const ShapeLink& link : product.links) {
      if (shows_body(link.representation)) own(link.link, OWNED);
    }
    for (const auto* list : {&product.representations, &product.tied}) {
      for (const Index representation : *list) {
        if (shows_body(representation)) own(representation, OWNED);
      }
    }
    for (const Index tie : product.ties) {
      const auto ends = placing_.instances.references(tie);
      const bool has_all = std::all_of(ends.begin(), ends.end(), [&](Reference end) {
        return end.record() == NO_RECORD || !placing_.classes.has(end.record(), SHOWING) ||
               shows_body(end.record());
      });
      if (has_all) own(tie, OWNED);
    }
  }

  /// Of a file for one body: whether a representation, or an item of one, stands in it.
  bool shows_body(Index representation) const {
    return body_ == NO_RECORD || goes_with(placing_.instances, representation, body_);
  }
  bool stands_with_body(Index item) const {
    return body_ == NO_RECORD || item == body_ || !is_body(placing_.instances, item);
  }
  bool is_left_out(Index record, Reference reference) const {
    return body_ != NO_RECORD && reference.is_listed() && placing_.classes.has(record, SHOWING) &&
           !stands_with_body(reference.record());
  }

  void follow(unsigned traits) {
    Classes& classes = placing_.classes;
    while (!open_.empty()) {
      const Index record = open_.take_back();
      const bool is_soft = classes.has(record, SOFT);
      const bool takes_all = !is_soft && body_ == NO_RECORD;
      for (const Reference reference : placing_.instances.references(record)) {
        const Index other = reference.record();
        if (other == NO_RECORD) continue;
        if (takes_all && !classes.has(other, SOFT | DEFINING | SHOWING)) {
          own(other, traits);  // Fast path for geometry.
          continue;
        }
        if (is_left_out(record, reference)) continue;
        if (is_soft || classes.has(other, SOFT)) {
          own(other, 0);
        } else if (is_another(other)) {
          guests_->push_back(other);
        } else {
          own(other, traits);
        }
      }
    }
  }

  /// Whether a record is no part of this file's products: another's definition, or a component's
  /// representation. Any other product's representation is shared, and stands with both.
  bool is_another(Index record) {
    if (!placing_.classes.has(record, DEFINING | SHOWING)) return false;
    if (placing_.stands.has(record, file_)) return false;
    if (placing_.classes.has(record, DEFINING)) return true;
    const std::span<const ProductId> owners = placing_.classes.owners(record);
    return std::none_of(
               owners.begin(), owners.end(),
               [&](ProductId owner) { return placing_.placement.file_of[owner] == file_; }) &&
           std::any_of(owners.begin(), owners.end(),
                       [&](ProductId owner) { return below_.has(owner); });
  }

  Placing& placing_;
  Below below_;
  FileId file_ = 0;
  Index body_ = NO_RECORD;  // the only one that the file has of its product
  std::vector<Index>* guests_ = nullptr;
  Column<Index> open_;
};

/// Placements that no usage names: relationships with a transformation between representations of
/// an assembly and its component. By file.
std::unordered_map<FileId, std::vector<Index>> find_bare_placements(Placing& placing) {
  std::unordered_set<Index> named;
  for (const Usage& usage : placing.products.usages) {
    named.insert(usage.relationships.begin(), usage.relationships.end());
  }
  std::unordered_map<FileId, std::vector<Index>> bare;
  for (const Index record :
       placing.instances.kept_with("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION")) {
    if (named.contains(record)) continue;
    const ParameterReader parameters(placing.instances, record, "REPRESENTATION_RELATIONSHIP");
    const auto owners = [&](std::size_t i) {
      const Index representation = parameters.record(i);
      return representation == NO_RECORD ? std::span<const ProductId>()
                                         : placing.classes.owners(representation);
    };
    const auto try_as_assembly = [&](std::span<const ProductId> some,
                                     std::span<const ProductId> others) {
      for (const ProductId assembly : some) {
        for (const std::uint32_t usage : placing.products.products[assembly].usages) {
          const Usage& used = placing.products.usages[usage];
          if (used.closes_circle) continue;
          if (std::find(others.begin(), others.end(), used.component) == others.end()) continue;
          placing.classes.give(record, USED);
          bare[placing.placement.file_of[assembly]].push_back(record);
          return;
        }
      }
    };
    try_as_assembly(owners(2), owners(3));
    try_as_assembly(owners(3), owners(2));
  }
  return bare;
}

/// What speaks of deeper levels, by the file of its assembly.
std::unordered_map<FileId, std::vector<const Usage*>> find_deeper(const Placing& placing) {
  std::unordered_map<FileId, std::vector<const Usage*>> deeper;
  for (const Usage& usage : placing.products.deeper) {
    deeper[placing.placement.file_of[usage.assembly]].push_back(&usage);
  }
  return deeper;
}

void bring_usage(Placing& placing, const Usage& usage, FileId file) {
  if (usage.closes_circle) return;
  const auto bring = [&](Index record) {
    if (!placing.keeps_others_out(file) || placing.closes_in(record, file)) {
      placing.bring(record, file);
    }
  };
  bring(usage.record);
  for (const Index record : usage.shapes) bring(record);
  for (const Index record : usage.placements) bring(record);
  for (const Index record : usage.relationships) bring(record);
  for (const ShapeLink& link : usage.links) bring(link.link);
}

void bring_usages(Placing& placing, FileId file) {
  if (placing.placement.files[file].body != NO_RECORD) return;
  for (const ProductId id : placing.placement.files[file].products) {
    for (const std::uint32_t position : placing.products.products[id].usages) {
      bring_usage(placing, placing.products.usages[position], file);
    }
  }
}

/// What says which product a representation is of.
void bring_definition(Placing& placing, const Product& product, FileId file) {
  placing.bring(product.definition, file);
  for (const Index shape : product.shapes) placing.bring(shape, file);
  for (const ShapeLink& link : product.links) placing.bring(link.link, file);
}

void bring_components(Placing& placing, FileId file) {
  for (const ProductId id : placing.placement.files[file].links) {
    const Product& component = placing.products.products[id];
    bring_definition(placing, component, file);
    const bool ties_matter =
        std::any_of(component.tied.begin(), component.tied.end(),
                    [&](Index record) { return placing.stands.has(record, file); });
    if (!ties_matter) continue;
    // What stands for the tied one means the component only through the tie.
    for (const Index tie : component.ties) placing.bring(tie, file);
  }
}

/// Usages that close circles stand in the first file, and nowhere else: an extracted product is at
/// the top of its file.
void keep_circles_out(Placing& placing) {
  for (const Usage& usage : placing.products.usages) {
    if (!usage.closes_circle) continue;
    placing.classes.give(usage.record, USED);
    for (const auto* list : {&usage.shapes, &usage.placements, &usage.relationships}) {
      for (const Index record : *list) placing.classes.give(record, USED);
    }
    for (const ShapeLink& link : usage.links) placing.classes.give(link.link, USED);
  }
}

}  // namespace

void fill_files(Placing& placing) {
  if (placing.placement.keeps_others_out) keep_circles_out(placing);
  const auto count = static_cast<FileId>(placing.placement.files.size());
  std::vector<std::vector<Index>> guests(count);
  {
    OwnRecords own(placing);
    for (FileId file = 0; file < count; ++file) own.enter(file, guests[file]);
  }
  placing.find_others();
  const auto bare = find_bare_placements(placing);
  const auto deeper = find_deeper(placing);
  for (FileId file = 0; file < count; ++file) {
    placing.placeholders.clear();
    bring_usages(placing, file);
    if (const auto found = deeper.find(file); found != deeper.end()) {
      for (const Usage* const usage : found->second) bring_usage(placing, *usage, file);
    }
    if (const auto found = bare.find(file); found != bare.end()) {
      for (const Index record : found->second) placing.bring(record, file);
    }
    bring_components(placing, file);
    for (const Index guest : guests[file]) placing.bring(guest, file);
    const std::vector<Index> made = std::move(placing.placeholders);
    placing.placeholders = {};
    placing.give_placements(file, made);
  }
}

}  // namespace Kessel
