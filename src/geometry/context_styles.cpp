#include "geometry/context_styles.h"

#include <algorithm>
#include <unordered_map>

namespace Kessel::Geometry {

namespace {

using UsagesByPlacement = std::unordered_map<Index, std::uint32_t>;
using Way = std::vector<std::uint32_t>;  // usages

UsagesByPlacement usages_by_placement(const Products& products) {
  UsagesByPlacement usages;
  for (std::uint32_t usage = 0; usage < products.usages.size(); ++usage) {
    for (const Index placement : products.usages[usage].placements) {
      usages.emplace(placement, usage);
    }
  }
  return usages;
}

/// Whether each usage is one of the component of the usage in front of it.
bool is_connected(const Products& products, const Way& way) {
  for (std::size_t i = 1; i < way.size(); ++i) {
    if (products.usages[way[i - 1]].component != products.usages[way[i]].assembly) return false;
  }
  return !way.empty();
}

/// The usages of the placements, the uppermost first; empty where they are no way.
Way way_of(const Products& products, const UsagesByPlacement& usages,
           const std::vector<Index>& placements) {
  Way way;
  for (const Index placement : placements) {
    const auto usage = usages.find(placement);
    if (usage == usages.end()) return {};
    way.push_back(usage->second);
  }
  if (is_connected(products, way)) return way;
  std::reverse(way.begin(), way.end());
  return is_connected(products, way) ? way : Way();
}

/// By usage: which component of its assembly it is.
std::vector<std::size_t> positions_of_usages(const Products& products) {
  std::vector<std::size_t> positions(products.usages.size());
  for (const Product& product : products.products) {
    for (std::size_t i = 0; i < product.usages.size(); ++i) positions[product.usages[i]] = i;
  }
  return positions;
}

}  // namespace

void style_components(const StyleTable& styles, const Products& products,
                      std::vector<DrawnPart>& parts) {
  if (styles.in_contexts().empty()) return;
  const UsagesByPlacement usages = usages_by_placement(products);
  const std::vector<std::size_t> positions = positions_of_usages(products);
  for (const ContextStyle& style : styles.in_contexts()) {
    const Way way = way_of(products, usages, style.placements);
    if (way.empty()) continue;
    PlacedStyle placed{{}, style.colour, style.is_hidden};
    for (const std::uint32_t usage : way) placed.path.push_back(positions[usage]);
    DrawnPart& part = parts[products.usages[way.front()].assembly];
    if (way.size() > 1) {
      part.styled.push_back(std::move(placed));
      continue;
    }
    PlacedComponent& component = part.components[placed.path.front()];
    if (component.colour == NO_COLOUR) component.colour = style.colour;
    if (style.is_hidden) component.is_hidden = true;
  }
}

}  // namespace Kessel::Geometry
