#include "output/made_places.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "products/parameter_reader.h"

namespace Kessel {

namespace {

constexpr std::string_view OPERATOR = "CARTESIAN_TRANSFORMATION_OPERATOR_3D";

/// The placement `from` of a component is `to` in its assembly; NO_RECORD stands for the origin. Or
/// `to` is an operator, which says by itself where the component is.
struct Place {
  Index from;
  Index to;
};

class Places {
 public:
  Places(const Instances& instances, const Products& products, const FileNumbers& numbers,
         FileId file, MadeRecords& made)
      : instances_(instances), products_(products), numbers_(numbers), file_(file), made_(made) {}

  void make(const Product& assembly, const std::vector<std::uint32_t>& usages) {
    if (assembly.representations.empty()) return;
    std::unordered_map<ProductId, std::vector<Place>> places;  // the first one last
    for (const std::uint32_t usage : usages) places[products_.usages[usage].component];
    find_places(assembly, places);
    for (const std::uint32_t usage : usages) {
      std::vector<Place>& left = places[products_.usages[usage].component];
      if (left.empty()) continue;
      say(assembly, products_.usages[usage], left.back());
      left.pop_back();
    }
  }

  /// Links the component's definition to those of its tied representations that the usage places.
  void link_tied(const Usage& usage) {
    const Product& component = products_.products[usage.component];
    if (component.tied.empty() || component.links.empty()) return;
    for (const Index relationship : usage.relationships) {
      const ParameterReader related(instances_, relationship, "REPRESENTATION_RELATIONSHIP");
      for (const Index end : {related.record(2), related.record(3)}) {
        const auto& tied = component.tied;
        if (std::find(tied.begin(), tied.end(), end) == tied.end()) continue;
        if (numbers_.of(end, file_) == 0 || !linked_.insert(end).second) continue;
        made_.add("SHAPE_DEFINITION_REPRESENTATION",
                  name_of(component.links.front().shape) + "," + name_of(end));
      }
    }
  }

 private:
  void find_places(const Product& assembly,
                   std::unordered_map<ProductId, std::vector<Place>>& places) const {
    std::unordered_map<Index, ProductId> shown;
    for (const auto& [component, none] : places) {
      const Product& product = products_.products[component];
      for (const auto* list : {&product.representations, &product.tied}) {
        for (const Index representation : *list) shown.emplace(representation, component);
      }
    }
    for (const auto* list : {&assembly.representations, &assembly.tied}) {
      for (const Index representation : *list) {
        for (const Reference item : instances_.references(representation)) {
          if (item.record() == NO_RECORD || !item.is_listed()) continue;
          find_place(item.record(), shown, places);
        }
      }
    }
    for (const TiedShape& other : assembly.tied_to_others) {
      const auto found = shown.find(other.representation);
      if (found != shown.end()) add_same_place(other.representation, places[found->second]);
    }
    for (auto& [component, found] : places) std::reverse(found.begin(), found.end());
  }

  /// Where the assembly is: any placement of the component stays what it is.
  void add_same_place(Index representation, std::vector<Place>& places) const {
    for (const Reference item : instances_.references(representation)) {
      if (!item.is_listed() || !stands_as_placement(item.record())) continue;
      return places.push_back({item.record(), item.record()});
    }
    places.push_back({NO_RECORD, NO_RECORD});
  }

  void find_place(Index item, const std::unordered_map<Index, ProductId>& shown,
                  std::unordered_map<ProductId, std::vector<Place>>& places) const {
    if (!instances_.is(item, "MAPPED_ITEM")) return;
    const ParameterReader mapped(instances_, item, "MAPPED_ITEM");
    const Index map = mapped.record(1);
    const Index to = mapped.record(2);
    if (map == NO_RECORD || (!stands_as_placement(to) && !stands_as_operator(to))) return;
    const ParameterReader mapping(instances_, map, "REPRESENTATION_MAP");
    const Index from = mapping.record(0);
    const auto found = shown.find(mapping.record(1));
    if (found != shown.end() && stands_as_placement(from)) {
      places[found->second].push_back({from, to});
    }
  }

  bool stands_as_placement(Index record) const {
    return record != NO_RECORD && is_placement(instances_, record) &&
           numbers_.of(record, file_) != 0;
  }

  bool stands_as_operator(Index record) const {
    return record != NO_RECORD && instances_.is(record, OPERATOR) &&
           numbers_.of(record, file_) != 0;
  }

  void say(const Product& assembly, const Usage& usage, Place place) {
    const Product& component = products_.products[usage.component];
    if (component.representations.empty()) return;
    const std::string shape = usage.shapes.empty() ? made_.add("PRODUCT_DEFINITION_SHAPE",
                                                               "'',''," + name_of(usage.record))
                                                   : name_of(usage.shapes.front());
    const std::string relationship = made_.add_complex(
        "REPRESENTATION_RELATIONSHIP('',''," + name_of(component.representations.front()) + "," +
        name_of(assembly.representations.front()) +
        ")REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" + transformation(place) +
        ")SHAPE_REPRESENTATION_RELATIONSHIP()");
    made_.add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", relationship + "," + shape);
  }

  std::string transformation(Place place) {
    if (place.to != NO_RECORD && instances_.is(place.to, OPERATOR)) return name_of(place.to);
    const std::string ends = place.from == NO_RECORD
                                 ? origin() + "," + origin()
                                 : name_of(place.from) + "," + name_of(place.to);
    return made_.add("ITEM_DEFINED_TRANSFORMATION", "'',''," + ends);
  }

  const std::string& origin() {
    if (origin_.empty()) origin_ = placement_at_origin(made_);
    return origin_;
  }

  std::string name_of(Index record) const {
    return "#" + std::to_string(numbers_.of(record, file_));
  }

  const Instances& instances_;
  const Products& products_;
  const FileNumbers& numbers_;
  FileId file_;
  MadeRecords& made_;
  std::string origin_;                // a placement, where one is needed
  std::unordered_set<Index> linked_;  // tied representations that have a link by now
};

/// Whether a mapped item shows nothing of the component in `file`: it is elsewhere, or all that is
/// below it.
bool shows_nothing(const Products& products, const Placement& placement, ProductId component,
                   FileId file) {
  if (placement.file_of[component] != file) return true;
  return !placement.keeps_others_out && products.is_assembly(component) &&
         !products.products[component].has_bodies;
}

}  // namespace

void make_places(const Instances& instances, const Products& products, const Placement& placement,
                 const FileNumbers& numbers, FileId file, MadeRecords& made) {
  Places places(instances, products, numbers, file, made);
  std::vector<std::uint32_t> unplaced;
  for (const ProductId id : placement.files[file].products) {
    unplaced.clear();
    for (const std::uint32_t position : products.products[id].usages) {
      const Usage& usage = products.usages[position];
      if (usage.closes_circle) continue;
      if (!usage.placements.empty()) {
        if (placement.file_of[usage.component] != file) places.link_tied(usage);
      } else if (shows_nothing(products, placement, usage.component, file)) {
        unplaced.push_back(position);
      }
    }
    if (!unplaced.empty()) places.make(products.products[id], unplaced);
  }
}

}  // namespace Kessel
