// Writes styles and presentation records.

#include "presentation.h"

namespace Kessel::bench {

InstanceId write_style(StepWriter& out, const Colour& colour) {
  const InstanceId rgb = out.add("COLOUR_RGB", "", colour.red, colour.green, colour.blue);
  const InstanceId fill_colour = out.add("FILL_AREA_STYLE_COLOUR", "", rgb);
  const InstanceId fill = out.add("FILL_AREA_STYLE", "", list(fill_colour));
  const InstanceId fill_area = out.add("SURFACE_STYLE_FILL_AREA", fill);
  const InstanceId side = out.add("SURFACE_SIDE_STYLE", "", list(fill_area));
  const InstanceId usage = out.add("SURFACE_STYLE_USAGE", Symbol{"BOTH"}, side);
  return out.add("PRESENTATION_STYLE_ASSIGNMENT", list(usage));
}

InstanceId write_styled_item(StepWriter& out, InstanceId style, InstanceId item) {
  return out.add("STYLED_ITEM", "color", list(style), item);
}

InstanceId write_overriding_item(StepWriter& out, InstanceId style, InstanceId item,
                                 InstanceId styled_item) {
  return out.add("OVER_RIDING_STYLED_ITEM", "overriding color", list(style), item, styled_item);
}

void write_presentation(StepWriter& out, InstanceId geometric_context,
                        std::span<const InstanceId> styled_items) {
  out.add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION", "", styled_items,
          geometric_context);
}

}  // namespace Kessel::bench
