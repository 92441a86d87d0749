// The bodies of a product.
#pragma once

#include <vector>

#include "instances/instances.h"
#include "products/products.h"

namespace Kessel {

/// Whether `record`, an item of a shape representation, is a body: a solid, a shell, a surface
/// model (ISO 10303-42), or a mapped item (ISO 10303-43), which shows one.
bool is_body(const Instances& instances, Index record);

/// The bodies among the items of the product's representations, each once, in order. What it shows
/// of components by mapped items is none of its own.
std::vector<Index> bodies_of(const Instances& instances, const Products& products,
                             ProductId product);

/// Whether `representation` has `body` among its items, or no body at all.
bool goes_with(const Instances& instances, Index representation, Index body);

}  // namespace Kessel
