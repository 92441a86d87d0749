// Writes parts of one coloured solid.

#include "simple_parts.h"

#include <string>

#include "geometric_context.h"
#include "polyhedron.h"
#include "polyhedron_solid.h"

namespace Kessel::bench {

Component write_solid_part(StepWriter& out, const ProductContexts& contexts,
                           InstanceId geometric_context, std::string_view name, const Solid& solid,
                           const Colour& colour, SolidLink link) {
  const Component part =
      link == SolidLink::direct
          ? write_part(out, contexts, geometric_context, name, list(solid.brep))
          : write_detached_part(out, contexts, geometric_context, name, list(solid.brep));
  const InstanceId style = write_style(out, colour);
  const InstanceId styled_item = write_styled_item(out, style, solid.brep);
  write_presentation(out, geometric_context, list(styled_item));
  return part;
}

Component write_box_part(StepWriter& out, const ProductContexts& contexts, std::string_view name,
                         const Vec3& size, const Colour& colour, SolidLink link) {
  const InstanceId geometric_context = write_own_context(out);
  const Solid solid = write_polyhedron(out, name, box({}, size));
  return write_solid_part(out, contexts, geometric_context, name, solid, colour, link);
}

InstanceId write_own_context(StepWriter& out) {
  return write_geometric_context(out, write_units(out));
}

Colour random_colour(Random& random) {
  Colour colour;
  colour.red = random.colour_level();
  colour.green = random.colour_level();
  colour.blue = random.colour_level();
  return colour;
}

Usage usage_at(const Component& component, std::string_view name, const Vec3& origin) {
  return {component, std::string(name), shifted_to(origin)};
}

}  // namespace Kessel::bench
