// Assemblies that have solids of their own beside their components.

#include <cstdint>
#include <string>
#include <vector>

#include "polyhedron.h"
#include "polyhedron_solid.h"
#include "shapes.h"
#include "simple_parts.h"

namespace Kessel::bench {
namespace {

// Writes an assembly that has a solid of its own, a box with the edges `size` (millimetres) at
// `position`, in one colour.
Component write_assembly_with_box(StepWriter& out, Random& random, const ProductContexts& contexts,
                                  std::string_view name, const std::vector<Usage>& usages,
                                  const Vec3& position, const Vec3& size, SolidLink link) {
  const InstanceId geometric_context = write_own_context(out);
  const Solid solid = write_polyhedron(out, name, box(shifted_to(position), size));
  Component assembly;
  if (link == SolidLink::direct) {
    assembly = write_assembly(out, contexts, geometric_context, name, usages, list(solid.brep));
  } else {
    assembly = write_assembly(out, contexts, geometric_context, name, usages);
    attach_solids(out, assembly, geometric_context, list(solid.brep));
  }
  const InstanceId style = write_style(out, random_colour(random));
  write_presentation(out, geometric_context, list(write_styled_item(out, style, solid.brep)));
  return assembly;
}

// Writes `size` boxes, each a part of its own, under a top assembly with a solid.
void write_top_with_box(StepWriter& out, Random& random, std::uint32_t size, SolidLink link) {
  const ProductContexts contexts = write_product_contexts(out);
  std::vector<Usage> usages;
  for (std::uint32_t i = 0; i < size; ++i) {
    const std::string name = "Lid " + std::to_string(i + 1);
    const Component lid =
        write_box_part(out, contexts, name, {40.0, 40.0, 5.0}, random_colour(random));
    usages.push_back(usage_at(lid, name, {50.0 * i, 0.0, 10.0}));
  }
  write_assembly_with_box(out, random, contexts, "Tray", usages, {0.0, 0.0, -20.0},
                          {50.0 * size, 40.0, 8.0}, link);
}

}  // namespace

void write_own_bodies(StepWriter& out, Random& random, std::uint32_t size) {
  const ProductContexts contexts = write_product_contexts(out);
  const Component slide =
      write_box_part(out, contexts, "Slide", {10.0, 10.0, 10.0}, random_colour(random));
  std::vector<Usage> branches;
  for (std::uint32_t i = 0; i < size; ++i) {
    const std::string number = std::to_string(i + 1);
    const Component wheel =
        write_box_part(out, contexts, "Wheel " + number, {8.0, 4.0, 8.0}, random_colour(random));
    const std::vector<Usage> wheels{usage_at(wheel, "Front", {0.0, 0.0, -10.0}),
                                    usage_at(wheel, "Back", {40.0, 0.0, -10.0})};
    // The lower assembly's body is attached, the upper one's is direct; then the other way round.
    const bool even = i % 2 == 0;
    const Component carriage = write_assembly_with_box(
        out, random, contexts, "Carriage " + number, wheels, {0.0, 0.0, 0.0}, {48.0, 20.0, 6.0},
        even ? SolidLink::detached : SolidLink::direct);
    const std::vector<Usage> on_frame{usage_at(carriage, "Carriage", {20.0, 0.0, 30.0}),
                                      usage_at(slide, "Slide", {80.0, 0.0, 30.0})};
    const Component frame = write_assembly_with_box(out, random, contexts, "Frame " + number,
                                                    on_frame, {0.0, 0.0, 0.0}, {120.0, 20.0, 10.0},
                                                    even ? SolidLink::direct : SolidLink::detached);
    branches.push_back(usage_at(frame, "Frame " + number, {0.0, 60.0 * i, 0.0}));
  }
  const InstanceId geometric_context = write_own_context(out);
  write_assembly(out, contexts, geometric_context, "Rail", branches);
}

void write_root_bodies(StepWriter& out, Random& random, std::uint32_t size) {
  write_top_with_box(out, random, size, SolidLink::direct);
}

void write_root_detached_bodies(StepWriter& out, Random& random, std::uint32_t size) {
  write_top_with_box(out, random, size, SolidLink::detached);
}

}  // namespace Kessel::bench
