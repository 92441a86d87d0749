// Parts of one coloured solid, as most shapes of the generator use them.

#pragma once

#include <string_view>

#include "presentation.h"
#include "product_structure.h"
#include "random.h"
#include "solid.h"
#include "step_writer.h"
#include "vec3.h"

namespace Kessel::bench {

// How a part's solid hangs on its shape definition.
enum class SolidLink {
  direct,    // as an item of the representation that the shape definition names
  detached,  // through a SHAPE_REPRESENTATION_RELATIONSHIP from a representation of placements
};

// Writes the part `name` (UTF-8) of one `solid` in one colour. Its geometric context is
// `geometric_context`; the style and the presentation record are its own.
Component write_solid_part(StepWriter& out, const ProductContexts& contexts,
                           InstanceId geometric_context, std::string_view name, const Solid& solid,
                           const Colour& colour, SolidLink link = SolidLink::direct);

// Writes a part that is one box with the edges `size` (millimetres), in one colour, with units and
// a geometric context of its own.
Component write_box_part(StepWriter& out, const ProductContexts& contexts, std::string_view name,
                         const Vec3& size, const Colour& colour,
                         SolidLink link = SolidLink::direct);

// Writes units and a geometric context for one part or assembly and returns the context.
InstanceId write_own_context(StepWriter& out);

// Returns a random colour.
Colour random_colour(Random& random);

// Returns the usage of `component` with its frame at `origin` (millimetres), not turned.
Usage usage_at(const Component& component, std::string_view name, const Vec3& origin);

}  // namespace Kessel::bench
