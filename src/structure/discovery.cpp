// Finds the records that are parts and puts a Part into the slot of each.
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "kessel/file.h"
#include "model/arena.h"
#include "structure/reachability.h"

namespace Kessel {

namespace {

constexpr std::string_view CANDIDATE_TYPES[] = {
    "PRODUCT_DEFINITION",
    "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS",
    "MAPPED_ITEM",
};

}  // namespace

void File::find_and_create_parts() {
  // What makes a candidate a part: it leads to a product or to a shape.
  static const std::vector<std::string_view> TARGET_TYPES = {
      "PRODUCT",
      "ADVANCED_BREP_SHAPE_REPRESENTATION",
      "GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION",
  };
  std::set<unsigned> numbers;
  for (const std::string_view type : CANDIDATE_TYPES) numbers.merge(get_ids(type));

  const std::vector<std::uint32_t> candidates(numbers.begin(), numbers.end());
  const std::vector<char> is_part = lead_to_any(entities_, candidates, TARGET_TYPES);
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    if (!is_part[i]) continue;
    Entity*& slot = entities_.edit(candidates[i]);
    Part* part = arena_->make<Part>(std::move(*slot));
    slot->~Entity();
    slot = part;
    add_part(part);
  }
}

}  // namespace Kessel
