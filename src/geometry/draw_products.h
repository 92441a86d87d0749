// The lines and placements of all products of a file.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "geometry/geometry_records.h"
#include "kessel/drawing.h"
#include "products/products.h"

namespace Kessel::Geometry {

/// One part for each product, in that order. Throws NoRoom where what they take would be more than
/// `most_bytes`. `done` is told how many were drawn after each.
std::vector<DrawnPart> draw_products(const GeometryRecords& records, const Products& products,
                                     const DrawingOptions& options, std::uint64_t most_bytes,
                                     const std::function<void(std::size_t)>& done);

}  // namespace Kessel::Geometry
