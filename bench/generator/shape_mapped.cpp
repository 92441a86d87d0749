// Mapped: mapped items over nested representation maps, with a small assembly around them.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "geometry_records.h"
#include "polyhedron.h"
#include "polyhedron_solid.h"
#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

constexpr std::uint32_t ITEMS_PER_PANEL = 1000;
constexpr std::uint32_t NESTED_LEVELS = 3;
constexpr std::uint32_t ITEMS_PER_LEVEL = 2;
constexpr std::uint32_t NESTED_ITEMS = NESTED_LEVELS * ITEMS_PER_LEVEL;
constexpr double PITCH = 20.0;

// Writes a representation of `items` around an origin of its own, and a map of it.
InstanceId write_map(StepWriter& out, std::string_view representation_type,
                     InstanceId geometric_context, const std::vector<InstanceId>& items) {
  std::vector<InstanceId> all_items{write_placement(out, {})};
  all_items.insert(all_items.end(), items.begin(), items.end());
  const InstanceId representation = out.add(representation_type, "", all_items, geometric_context);
  return out.add("REPRESENTATION_MAP", all_items.front(), representation);
}

InstanceId write_mapped_item(StepWriter& out, InstanceId map, const Vec3& position) {
  const InstanceId target = write_placement(out, shifted_to(position));
  return out.add("MAPPED_ITEM", "", map, target);
}

// Writes a map of a button, then maps that hold two mapped items of the map before; returns all
// maps.
std::vector<InstanceId> write_nested_maps(StepWriter& out, InstanceId geometric_context,
                                          std::uint32_t levels) {
  const Solid button = write_polyhedron(out, "button", box({}, {5.0, 4.0, 3.0}));
  std::vector<InstanceId> maps{
      write_map(out, "ADVANCED_BREP_SHAPE_REPRESENTATION", geometric_context, {button.brep})};
  double height = 5.0;
  for (std::uint32_t level = 0; level < levels; ++level) {
    std::vector<InstanceId> items;
    for (std::uint32_t i = 0; i < ITEMS_PER_LEVEL; ++i)
      items.push_back(write_mapped_item(out, maps.back(), {0.0, 0.0, i * height}));
    maps.push_back(write_map(out, "SHAPE_REPRESENTATION", geometric_context, items));
    height *= ITEMS_PER_LEVEL;
  }
  return maps;
}

// Writes a panel whose shape has `item_count` mapped items in all, those inside the maps included.
Component write_panel(StepWriter& out, const ProductContexts& contexts, const std::string& name,
                      std::uint32_t item_count) {
  const std::uint32_t per_row = 40;
  const InstanceId geometric_context = write_own_context(out);
  const bool nested = item_count > NESTED_ITEMS;
  const std::vector<InstanceId> maps =
      write_nested_maps(out, geometric_context, nested ? NESTED_LEVELS : 0);
  const std::uint32_t own_count = nested ? item_count - NESTED_ITEMS : item_count;
  std::vector<InstanceId> items;
  for (std::uint32_t i = 0; i < own_count; ++i) {
    // The panel uses the deepest map first, then the others in turn.
    const InstanceId map = maps[maps.size() - 1 - i % maps.size()];
    items.push_back(
        write_mapped_item(out, map, {PITCH * (i % per_row), PITCH * (i / per_row), 0.0}));
  }
  return write_assembly(out, contexts, geometric_context, name, {}, items);
}

}  // namespace

void write_mapped(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const Component foot =
      write_box_part(out, contexts, "Foot", {10.0, 600.0, 10.0}, random_colour(random));
  std::vector<Usage> usages{usage_at(foot, "Left foot", {-40.0, 0.0, 0.0}),
                            usage_at(foot, "Right foot", {830.0, 0.0, 0.0})};
  double height = 0.0;
  for (std::uint32_t first = 0; first < size; first += ITEMS_PER_PANEL) {
    const std::string name = "Panel " + std::to_string(first / ITEMS_PER_PANEL + 1);
    const std::uint32_t item_count = std::min(ITEMS_PER_PANEL, size - first);
    const Component panel = write_panel(out, contexts, name, item_count);
    usages.push_back(usage_at(panel, name, {0.0, 0.0, height}));
    height += 50.0;
  }
  const InstanceId geometric_context = write_own_context(out);
  write_assembly(out, contexts, geometric_context, "Keyboard rack", usages);
}

}  // namespace Kessel::bench
