// Styles of components in the context of those above them.
#pragma once

#include <vector>

#include "geometry/colours.h"
#include "kessel/drawing.h"
#include "products/products.h"

namespace Kessel::Geometry {

/// Gives the components of `parts`, which are those of `products`, what `styles` say of their
/// placements. A way of several placements may begin at either end; one that leads nowhere says
/// nothing.
void style_components(const StyleTable& styles, const Products& products,
                      std::vector<DrawnPart>& parts);

}  // namespace Kessel::Geometry
