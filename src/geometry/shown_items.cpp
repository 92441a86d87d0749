#include "geometry/shown_items.h"

#include "geometry/tessellation.h"

namespace Kessel::Geometry {

namespace {

bool holds_others(Role role) {
  return role == Role::holder || role == Role::face || role == Role::tessellated;
}

}  // namespace

ItemFinder::ItemFinder(const GeometryRecords& records, const StyleTable& styles, Budget& budget)
    : records_(records), styles_(styles), budget_(budget), places_(records.instances().size(), 0) {}

bool ItemFinder::has(Index record) const {
  const std::uint32_t place = places_[record];
  return place < found_.size() && found_[place].record == record;
}

std::span<const ShownItem> ItemFinder::find(std::span<const ShownRoot> roots) {
  found_.clear();
  for (std::uint32_t root = 0; root < roots.size(); ++root) {
    const Index record = roots[root].record;
    if (styles_.hides(record)) continue;
    Colour colour = roots[root].colour;
    const std::int32_t own = styles_.of(record).any();
    if (own != NO_RGB) colour = {own, ColourOf::representation};
    if (records_.role(record) == Role::moved) {
      enter({record, root, Role::tessellated, colour});
      continue;
    }
    for (const Reference item : records_.instances().references(record)) {
      if (item.is_listed() && item.record() != NO_RECORD) add(item.record(), root, colour);
    }
  }
  // The list grows while it is gone through: level by level, so that faces come before edges.
  for (std::size_t i = 0; i < found_.size(); ++i) {
    if (holds_others(found_[i].role)) enter(ShownItem(found_[i]));
  }
  return found_;
}

void ItemFinder::enter(const ShownItem& item) {
  const auto references = records_.instances().references(item.record);
  budget_.spend(1 + references.size());
  if (item.role == Role::tessellated) {
    // Behind its items stands what it is a picture of.
    try {
      for (const Index part : tessellated_items(records_, item.record)) {
        add(part, item.root, item.colour);
      }
    } catch (const BadGeometry&) {
    }
    return;
  }
  for (const Reference reference : references) {
    if (reference.record() != NO_RECORD) add(reference.record(), item.root, item.colour);
  }
}

void ItemFinder::add(Index record, std::uint32_t root, const Colour& inherited) {
  const Role role = records_.role(record);
  if (role == Role::none || styles_.hides(record)) return;
  const Colour colour = colour_of(record, role, inherited);
  if (has(record)) {
    ShownItem& known = found_[places_[record]];
    if (colour.of > known.colour.of) known.colour = colour;
    return;
  }
  budget_.spend(1);
  places_[record] = static_cast<std::uint32_t>(found_.size());
  found_.push_back({record, root, role, colour});
}

Colour ItemFinder::colour_of(Index record, Role role, const Colour& inherited) const {
  const StyleColours own = styles_.of(record);
  if (own.any() == NO_RGB) return inherited;
  switch (role) {
    case Role::face:
    case Role::triangles:
      return {own.any(), ColourOf::face};
    case Role::curve:
    case Role::strip:
      return {own.curve != NO_RGB ? own.curve : own.surface, ColourOf::curve};
    case Role::edge:
      return inherited.of > ColourOf::edge ? inherited : Colour{own.any(), ColourOf::edge};
    case Role::mapped:
    case Role::moved:
      return {own.any(), ColourOf::representation};
    default:
      return {own.any(), ColourOf::holder};
  }
}

}  // namespace Kessel::Geometry
