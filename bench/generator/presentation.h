// Colours of solids and faces (ISO 10303-46).

#pragma once

#include <span>

#include "step_writer.h"

namespace Kessel::bench {

// A colour; every value is from 0 to 1.
struct Colour {
  double red = 0.0;
  double green = 0.0;
  double blue = 0.0;
};

// Writes a surface style of one colour and returns its PRESENTATION_STYLE_ASSIGNMENT.
InstanceId write_style(StepWriter& out, const Colour& colour);

// Writes a STYLED_ITEM that gives `item` the style `style` and returns it.
InstanceId write_styled_item(StepWriter& out, InstanceId style, InstanceId item);

// Writes an OVER_RIDING_STYLED_ITEM that gives `item`, a face, the style `style` in place of the
// one that `styled_item` gives the whole, and returns it.
InstanceId write_overriding_item(StepWriter& out, InstanceId style, InstanceId item,
                                 InstanceId styled_item);

// Writes a MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION of `styled_items`.
void write_presentation(StepWriter& out, InstanceId geometric_context,
                        std::span<const InstanceId> styled_items);

}  // namespace Kessel::bench
