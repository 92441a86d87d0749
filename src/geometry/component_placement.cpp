#include "geometry/component_placement.h"

#include <algorithm>

#include "geometry/attributes.h"
#include "geometry/mapping.h"
#include "geometry/placement_reader.h"

namespace Kessel::Geometry {

namespace {

std::uint64_t pair_of(ProductId assembly, ProductId component) {
  return std::uint64_t{assembly} << 32 | component;
}

}  // namespace

ComponentPlacement::ComponentPlacement(const GeometryRecords& records, const Owners& owners,
                                       UnitTable& units)
    : records_(records), owners_(owners), units_(units) {
  const Instances& instances = records.instances();
  const Products& products = owners.products();
  for (ProductId product = 0; product < products.products.size(); ++product) {
    for (const Index representation : owners.representations(product)) {
      for (const Reference item : instances.references(representation)) {
        if (!item.is_listed() || item.record() == NO_RECORD) continue;
        if (is_placement(instances, item.record())) {
          items_.emplace_back(item.record(), representation);
        }
        if (records.role(item.record()) != Role::mapped) continue;
        try {
          const ProductId mapped = owners.of(read_mapping(records, item.record()).representation);
          if (mapped != NO_PRODUCT) mapped_[pair_of(product, mapped)].push_back(item.record());
        } catch (const BadGeometry&) {
          continue;  // It shows nothing.
        }
      }
    }
  }
  std::sort(items_.begin(), items_.end());
  for (auto& [pair, items] : mapped_) std::reverse(items.begin(), items.end());
}

bool ComponentPlacement::stands_in(Index placement, Index representation) const {
  return std::binary_search(items_.begin(), items_.end(), std::pair(placement, representation));
}

RepresentationUnits ComponentPlacement::units_of(ProductId product) {
  RepresentationUnits units;
  for (const Index representation : owners_.representations(product)) {
    units = units_.of(representation);
    if (units.metres > 0) break;
  }
  return units;
}

std::optional<Frame> ComponentPlacement::place(const Usage& usage) {
  for (const Index relationship : usage.relationships) {
    if (const auto frame = by_relationship(usage, relationship)) return frame;
  }
  return by_mapped_item(usage);
}

std::optional<Frame> ComponentPlacement::by_relationship(const Usage& usage, Index relationship) {
  constexpr std::string_view PLACING = "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION";
  const Instances& instances = records_.instances();
  if (!instances.is(relationship, PLACING)) return std::nullopt;
  try {
    const bool is_complex = instances.types().is_complex(instances.type(relationship));
    const Attributes related(records_, relationship, "REPRESENTATION_RELATIONSHIP", 0);
    Index component = related.record(2);
    Index assembly = related.record(3);
    const Index way = Attributes(records_, relationship, PLACING, is_complex ? 0 : 4).record(0);
    // Some systems name the assembly first.
    const ProductId first = owners_.of(component);
    const ProductId second = owners_.of(assembly);
    const bool is_turned = usage.assembly != usage.component &&
                           (first == usage.assembly || second == usage.component) &&
                           first != usage.component && second != usage.assembly;
    if (is_turned) std::swap(component, assembly);
    const double unit = units_.of(component).to(units_.of(assembly));
    if (!instances.is(way, "ITEM_DEFINED_TRANSFORMATION")) {
      Frame frame = read_frame(records_, way);
      if (is_turned) frame = inverse(frame);
      return in_units_of_products(usage, component, assembly, after(frame, scaled(unit, Frame())));
    }
    const Attributes items(records_, way, "ITEM_DEFINED_TRANSFORMATION", 2);
    Index origin = items.record(0);
    Index target = items.record(1);
    if (is_turned) std::swap(origin, target);
    // What stands in whose representation counts more than the order.
    if (!stands_in(origin, component) && !stands_in(target, assembly) &&
        stands_in(target, component) && stands_in(origin, assembly)) {
      std::swap(origin, target);
    }
    return in_units_of_products(usage, component, assembly,
                                frame_between(records_, origin, target, unit));
  } catch (const BadGeometry&) {
    return std::nullopt;
  }
}

/// The mapped item that stands for the usage: what the usage's own shape shows, else the next one
/// of its component.
std::vector<Index> ComponentPlacement::mapped_items(const Usage& usage) {
  std::vector<Index> items;
  for (const ShapeLink& link : usage.links) {
    for (const Reference item : records_.instances().references(link.representation)) {
      if (item.record() == NO_RECORD || !item.is_listed()) continue;
      if (records_.role(item.record()) == Role::mapped) items.push_back(item.record());
    }
    if (records_.role(link.representation) == Role::mapped) items.push_back(link.representation);
  }
  const auto found = mapped_.find(pair_of(usage.assembly, usage.component));
  if (items.empty() && found != mapped_.end() && !found->second.empty()) {
    items.push_back(found->second.back());
    found->second.pop_back();
  }
  return items;
}

std::optional<Frame> ComponentPlacement::by_mapped_item(const Usage& usage) {
  for (const Index item : mapped_items(usage)) {
    try {
      const Mapping mapping = read_mapping(records_, item);
      if (owners_.of(mapping.representation) != usage.component) continue;
      const auto& of_assembly = owners_.products().products[usage.assembly].representations;
      const Index assembly = of_assembly.empty() ? mapping.representation : of_assembly.front();
      const double unit = units_.of(mapping.representation).to(units_.of(assembly));
      return in_units_of_products(usage, mapping.representation, assembly,
                                  frame_between(records_, mapping.origin, mapping.target, unit));
    } catch (const BadGeometry&) {
      continue;
    }
  }
  return std::nullopt;
}

/// `frame` leads from one representation to another, each in its own units; the products' may be
/// others.
Frame ComponentPlacement::in_units_of_products(const Usage& usage, Index component, Index assembly,
                                               const Frame& frame) {
  const double before = units_of(usage.component).to(units_.of(component));
  const double behind = units_.of(assembly).to(units_of(usage.assembly));
  return scaled(behind, after(frame, scaled(before, Frame())));
}

}  // namespace Kessel::Geometry
