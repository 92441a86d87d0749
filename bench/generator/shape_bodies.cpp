// Bodies: parts with plausible boundary representations, nine to a sub-assembly.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "geometric_context.h"
#include "polyhedron_solid.h"
#include "random_geometry.h"
#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

constexpr std::uint32_t PARTS_PER_ASSEMBLY = 9;

// Writes a plate with many flanks, somewhere in space.
std::vector<Solid> write_plate(StepWriter& out, Random& random) {
  const std::size_t corners = 16 + random.below(8);
  const Vec3 origin{random.length(-80.0, 80.0), random.length(-80.0, 80.0),
                    random.length(-80.0, 80.0)};
  const Frame frame = random_frame(random, origin);
  const std::vector<Point2> outline = random_outline(random, corners, 30.0, 60.0);
  const double height = random.length(2.0, 12.0);
  return {write_polyhedron(out, "plate", prism(frame, outline, height))};
}

// Writes a row of four or five boxes that do not touch, somewhere in space.
std::vector<Solid> write_row_of_boxes(StepWriter& out, Random& random) {
  const std::uint32_t count = 4 + (random.below(5) < 2 ? 1 : 0);
  const Vec3 origin{random.length(-80.0, 80.0), random.length(-80.0, 80.0),
                    random.length(-80.0, 80.0)};
  const Frame row = random_frame(random, origin);
  std::vector<Solid> solids;
  double position = 0.0;
  for (std::uint32_t i = 0; i < count; ++i) {
    const Vec3 size{random.length(5.0, 20.0), random.length(5.0, 40.0), random.length(5.0, 40.0)};
    const Frame frame{row.point_outside({position, 0.0, 0.0}), row.axis, row.ref_direction};
    solids.push_back(write_polyhedron(out, "block", box(frame, size)));
    position += size.x + random.length(1.0, 5.0);
  }
  return solids;
}

// Writes styles of their own for the first solid and for two of its faces.
void write_styles(StepWriter& out, Random& random, InstanceId geometric_context,
                  const Solid& solid) {
  const InstanceId items[] = {solid.brep, solid.faces[0], solid.faces[1]};
  std::vector<InstanceId> styled_items;
  for (const InstanceId item : items) {
    const InstanceId style = write_style(out, random_colour(random));
    styled_items.push_back(write_styled_item(out, style, item));
  }
  write_presentation(out, geometric_context, styled_items);
}

Component write_body_part(StepWriter& out, Random& random, const ProductContexts& contexts,
                          std::uint32_t number) {
  const InstanceId geometric_context =
      write_geometric_context(out, write_units(out, AngleUnit::degree));
  const bool is_plate = random.below(2) == 0;
  const std::vector<Solid> solids =
      is_plate ? write_plate(out, random) : write_row_of_boxes(out, random);
  std::vector<InstanceId> breps;
  for (const Solid& solid : solids) breps.push_back(solid.brep);
  const std::string name = (is_plate ? "Plate " : "Blocks ") + std::to_string(number);
  const Component part = write_part(out, contexts, geometric_context, name, breps);
  write_styles(out, random, geometric_context, solids.front());
  return part;
}

Usage random_usage(Random& random, const Component& component, const std::string& name) {
  const Vec3 origin{random.length(-500.0, 500.0), random.length(-500.0, 500.0),
                    random.length(-500.0, 500.0)};
  return {component, name, random_frame(random, origin)};
}

}  // namespace

void write_bodies(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  std::vector<Usage> groups;
  for (std::uint32_t first = 0; first < size; first += PARTS_PER_ASSEMBLY) {
    std::vector<Usage> parts;
    for (std::uint32_t i = first; i < std::min(first + PARTS_PER_ASSEMBLY, size); ++i) {
      const Component part = write_body_part(out, random, contexts, i + 1);
      parts.push_back(random_usage(random, part, "Body " + std::to_string(i + 1)));
    }
    const InstanceId geometric_context = write_own_context(out);
    const std::string name = "Group " + std::to_string(groups.size() + 1);
    const Component group = write_assembly(out, contexts, geometric_context, name, parts);
    groups.push_back(random_usage(random, group, name));
  }
  const InstanceId geometric_context = write_own_context(out);
  write_assembly(out, contexts, geometric_context, "Machine", groups);
}

}  // namespace Kessel::bench
