#include "placement/classes.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "instances/keyword_row.h"
#include "placement/types_in.h"

namespace Kessel {

namespace {

using enum Keywords::Match;

// Contexts and units (ISO 10303-41, -43). PRESENTATION_STYLE_BY_CONTEXT is a style, and no context.
constexpr Keywords::Row SOFT_TYPES[] = {
    {ending, "REPRESENTATION_CONTEXT"},
    {ending, "_ASSIGNED_CONTEXT"},
    {ending, "APPLICATION_CONTEXT"},
    {exactly, "APPLICATION_CONTEXT_ELEMENT"},
    {exactly, "PRODUCT_CONTEXT"},
    {exactly, "PRODUCT_DEFINITION_CONTEXT"},
    {exactly, "PRODUCT_CONCEPT_CONTEXT"},
    {exactly, "LIBRARY_CONTEXT"},
    {exactly, "DESIGN_CONTEXT"},
    {exactly, "MECHANICAL_CONTEXT"},
    {ending, "_UNIT"},
    {ending, "_WITH_UNIT"},
    {exactly, "DERIVED_UNIT_ELEMENT"},
    {exactly, "DIMENSIONAL_EXPONENTS"},
};

// What refers to points, directions or placements as to no more than values (ISO 10303-42, -46).
constexpr Keywords::Row MADE_OF_PLAIN[] = {
    {exactly, "VECTOR"},
    {ending, "PLACEMENT"},
    {exactly, "AXIS2_PLACEMENT_2D"},
    {exactly, "AXIS2_PLACEMENT_3D"},
    {exactly, "LINE"},
    {exactly, "CIRCLE"},
    {exactly, "ELLIPSE"},
    {exactly, "HYPERBOLA"},
    {exactly, "PARABOLA"},
    {exactly, "POLYLINE"},
    {ending, "_CURVE"},
    {beginning, "B_SPLINE_"},
    {exactly, "PLANE"},
    {ending, "_SURFACE"},
    {beginning, "SURFACE_OF_"},
    {exactly, "VERTEX_POINT"},
    {exactly, "POLY_LOOP"},
    {exactly, "BLOCK"},
    {exactly, "SPHERE"},
    {exactly, "TORUS"},
    {beginning, "RIGHT_"},
    {exactly, "PLANAR_BOX"},
    {beginning, "CAMERA_MODEL_"},
};

}  // namespace

bool is_plain_geometry(const Instances& instances, Index record) {
  return is_placement(instances, record) || instances.is(record, "CARTESIAN_POINT") ||
         instances.is(record, "DIRECTION");
}

TypeSet made_of_plain_geometry(const TypeTable& types) {
  return types_in(MADE_OF_PLAIN, types);
}

Classes::Classes(const Instances& instances, const Products& products) : traits_(instances.size()) {
  find_soft(instances);
  for (ProductId id = 0; id < products.products.size(); ++id) {
    const Product& product = products.products[id];
    give(product.definition, DEFINING);
    for (const Index shape : product.shapes) give(shape, DEFINING);
    for (const ShapeLink& link : product.links) give(link.link, DEFINING);
    for (const Index tie : product.ties) give(tie, DEFINING);
    for (const auto* list : {&product.representations, &product.tied}) {
      for (const Index representation : *list) {
        give(representation, SHOWING);
        owners_[representation].push_back(id);
      }
    }
  }
  for (const Usage& usage : products.usages) {
    if (!usage.closes_circle) give_used(usage);
  }
  for (const Usage& usage : products.deeper) give_used(usage);
  for (const auto* list : {&products.usages, &products.deeper}) {
    for (const Usage& usage : *list) find_occurrence_names(instances, usage);
  }
}

void Classes::give_used(const Usage& usage) {
  give(usage.record, USED);
  for (const Index record : usage.shapes) give(record, USED);
  for (const Index record : usage.placements) give(record, USED);
  for (const Index record : usage.relationships) give(record, USED);
  for (const ShapeLink& link : usage.links) give(link.link, USED);
}

std::span<const ProductId> Classes::owners(Index representation) const {
  const auto found = owners_.find(representation);
  if (found == owners_.end()) return {};
  return found->second;
}

void Classes::find_soft(const Instances& instances) {
  static_assert(SOFT == 1);
  const TypeSet is_soft = types_in(SOFT_TYPES, instances.types());
  const std::span<const TypeId> types = instances.record_types();
  for (Index record = 0; record < types.size(); ++record) traits_[record] = is_soft[types[record]];
}

/// A representation of placements alone that only a usage has is a name for the occurrence: styles
/// that name it go with their items, and bring it along.
void Classes::find_occurrence_names(const Instances& instances, const Usage& usage) {
  for (const ShapeLink& link : usage.links) {
    if (has(link.representation, SHOWING)) continue;
    std::vector<Index> open{link.representation};
    std::unordered_set<Index> seen;
    bool is_name = true;
    while (is_name && !open.empty()) {
      const Index record = open.back();
      open.pop_back();
      for (const Reference reference : instances.references(record)) {
        const Index other = reference.record();
        if (other == NO_RECORD || has(other, SOFT) || !seen.insert(other).second) continue;
        is_name = is_name && is_plain_geometry(instances, other);
        open.push_back(other);
      }
    }
    if (is_name) give(link.representation, SOFT);
  }
}

}  // namespace Kessel
