#include "placement/bodies.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace Kessel {

namespace {

// MANIFOLD_SOLID_BREP and FACETED_BREP, CSG_SOLID and EXTRUDED_AREA_SOLID, OPEN_SHELL and
// TESSELLATED_SHELL, SHELL_BASED_SURFACE_MODEL and FACE_BASED_SURFACE_MODEL, ...
constexpr std::string_view BODY_ENDINGS[] = {"_BREP",          "BREP_WITH_VOIDS", "_SOLID",
                                             "_SHELL",         "SURFACE_MODEL",   "SOLID_REPLICA",
                                             "_SOLID_COMPLEX", "MAPPED_ITEM"};

/// The representations that a mapped item shows, of which there is one in sound files.
std::vector<Index> mapped_by(const Instances& instances, Index item) {
  std::vector<Index> mapped;
  for (const Reference map : instances.references(item)) {
    if (map.record() == NO_RECORD || !instances.is(map.record(), "REPRESENTATION_MAP")) continue;
    for (const Reference reference : instances.references(map.record())) {
      if (reference.record() != NO_RECORD) mapped.push_back(reference.record());
    }
  }
  return mapped;
}

bool shows_component(const Instances& instances, const Products& products, const Product& product,
                     Index item) {
  if (!instances.is(item, "MAPPED_ITEM")) return false;
  const std::vector<Index> mapped = mapped_by(instances, item);
  return std::any_of(product.usages.begin(), product.usages.end(), [&](std::uint32_t usage) {
    const Product& component = products.products[products.usages[usage].component];
    return std::any_of(mapped.begin(), mapped.end(), [&](Index representation) {
      const auto& shown = component.representations;
      return std::find(shown.begin(), shown.end(), representation) != shown.end();
    });
  });
}

}  // namespace

bool is_body(const Instances& instances, Index record) {
  const auto& keywords = instances.types().keywords(instances.type(record));
  return std::any_of(keywords.begin(), keywords.end(), [](std::string_view keyword) {
    return std::any_of(std::begin(BODY_ENDINGS), std::end(BODY_ENDINGS),
                       [&](std::string_view ending) { return keyword.ends_with(ending); });
  });
}

std::vector<Index> bodies_of(const Instances& instances, const Products& products,
                             ProductId product) {
  const Product& part = products.products[product];
  std::vector<Index> bodies;
  std::unordered_set<Index> seen;
  for (const auto* list : {&part.representations, &part.tied}) {
    for (const Index representation : *list) {
      for (const Reference item : instances.references(representation)) {
        if (item.record() == NO_RECORD || !item.is_listed()) continue;
        if (!is_body(instances, item.record()) || !seen.insert(item.record()).second) continue;
        if (shows_component(instances, products, part, item.record())) continue;
        bodies.push_back(item.record());
      }
    }
  }
  return bodies;
}

bool goes_with(const Instances& instances, Index representation, Index body) {
  bool has_others = false;
  for (const Reference item : instances.references(representation)) {
    if (item.record() == NO_RECORD || !item.is_listed()) continue;
    if (item.record() == body) return true;
    has_others = has_others || is_body(instances, item.record());
  }
  return !has_others;
}

}  // namespace Kessel
