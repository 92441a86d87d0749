// Long records: a shell that lists many faces, and a presentation that lists many styled items.

#include <cstdint>
#include <string>
#include <vector>

#include "polyhedron_solid.h"
#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

constexpr std::uint32_t PART_COUNT = 100;

// Writes part `number` (from 0) with `solid` and gives `styled_count` styled items to it, which all
// have one style and go round its faces; appends them to `styled_items`.
Usage write_styled_part(StepWriter& out, Random& random, const ProductContexts& contexts,
                        InstanceId geometric_context, std::uint32_t number, const Polyhedron& body,
                        std::uint32_t styled_count, std::vector<InstanceId>& styled_items) {
  const Solid solid = write_polyhedron(out, "body", body, GeometryStyle::common);
  const std::string name = "Styled part " + std::to_string(number + 1);
  const Component part = write_part(out, contexts, geometric_context, name, list(solid.brep));
  if (styled_count > 0) {
    const InstanceId style = write_style(out, random_colour(random));
    for (std::uint32_t i = 0; i < styled_count; ++i)
      styled_items.push_back(write_styled_item(out, style, solid.faces[i % solid.faces.size()]));
  }
  return usage_at(part, name, {300.0 * number, 0.0, 0.0});
}

}  // namespace

void write_long_records(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  // One context for all, as the presentation record belongs to all parts and has one context.
  const InstanceId geometric_context = write_own_context(out);
  std::vector<Usage> usages;
  std::vector<InstanceId> styled_items;
  for (std::uint32_t i = 0; i < PART_COUNT; ++i) {
    const Polyhedron body = i == 0 ? faceted_column(size, 100.0) : box({}, {30.0, 20.0, 10.0});
    const std::uint32_t styled_count = size / PART_COUNT + (i < size % PART_COUNT ? 1 : 0);
    usages.push_back(write_styled_part(out, random, contexts, geometric_context, i, body,
                                       styled_count, styled_items));
  }
  write_assembly(out, contexts, geometric_context, "Styled parts", usages);
  write_presentation(out, geometric_context, styled_items);
}

}  // namespace Kessel::bench
