// Finds the records that are parts and puts a Part into the slot of each.
#include "structure/discovery.h"

#include <set>
#include <string_view>
#include <utility>

#include "structure/reachability.h"

namespace Kessel {

namespace {

constexpr std::string_view CANDIDATE_TYPES[] = {
    "PRODUCT_DEFINITION",
    "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS",
    "MAPPED_ITEM",
};

}  // namespace

std::vector<std::uint32_t> find_part_numbers(const Store& store) {
  // What makes a candidate a part: it leads to a product or to a shape.
  static const std::vector<std::string_view> TARGET_TYPES = {
      "PRODUCT",
      "ADVANCED_BREP_SHAPE_REPRESENTATION",
      "GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION",
  };
  std::set<unsigned> numbers;
  for (const std::string_view type : CANDIDATE_TYPES) numbers.merge(store.get_ids(type));

  const std::vector<std::uint32_t> candidates(numbers.begin(), numbers.end());
  const std::vector<char> is_part = lead_to_any(store.entities, candidates, TARGET_TYPES);
  std::vector<std::uint32_t> parts;
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    if (is_part[i]) parts.push_back(candidates[i]);
  }
  return parts;
}

void find_and_create_parts(Store& store) {
  for (const std::uint32_t number : find_part_numbers(store)) {
    Entity*& slot = store.entities.edit(number);
    Part* part = store.arena.make<Part>(std::move(*slot));
    slot->~Entity();
    slot = part;
    store.add_part(part);
  }
}

}  // namespace Kessel
