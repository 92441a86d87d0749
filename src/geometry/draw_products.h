// The lines and placements of all products of a file.
#pragma once

#include <functional>
#include <vector>

#include "geometry/geometry_records.h"
#include "kessel/drawing.h"
#include "products/products.h"

namespace Kessel::Geometry {

/// One part for each product, in that order. `done` is told how many were drawn after each.
std::vector<DrawnPart> draw_products(const GeometryRecords& records, const Products& products,
                                     const DrawingOptions& options,
                                     const std::function<void(std::size_t)>& done);

}  // namespace Kessel::Geometry
