// Where usages put components.
#pragma once

#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "geometry/colours.h"
#include "geometry/geometry_records.h"
#include "geometry/owners.h"
#include "geometry/transformation.h"
#include "geometry/units.h"

namespace Kessel::Geometry {

/// Finds out what places components: a relationship between representations with a transformation
/// (ISO 10303-43), or a mapped item of the component's representation.
class ComponentPlacement {
 public:
  ComponentPlacement(const GeometryRecords& records, const Owners& owners, UnitTable& units);

  /// From the component's coordinates to the assembly's, each in the unit of its representations;
  /// none where the file does not say.
  std::optional<Frame> place(const Usage& usage);

  /// The unit that a product's coordinates are given in.
  RepresentationUnits units_of(ProductId product);

 private:
  std::optional<Frame> by_relationship(const Usage& usage, Index relationship);
  std::optional<Frame> by_mapped_item(const Usage& usage);
  Frame in_units_of_products(const Usage& usage, Index component, Index assembly,
                             const Frame& frame);
  bool stands_in(Index placement, Index representation) const;
  std::vector<Index> mapped_items(const Usage& usage);

  const GeometryRecords& records_;
  const Owners& owners_;
  UnitTable& units_;
  /// Placements and the representations they stand in, ascending.
  std::vector<std::pair<Index, Index>> items_;
  /// By assembly and component: the mapped items that no usage took yet, the last one first.
  std::unordered_map<std::uint64_t, std::vector<Index>> mapped_;
};

}  // namespace Kessel::Geometry
