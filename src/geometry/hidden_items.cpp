#include "geometry/hidden_items.h"

#include "geometry/attributes.h"

namespace Kessel::Geometry {

HiddenItems::HiddenItems(const GeometryRecords& records) {
  const Instances& instances = records.instances();
  const TypeTable& types = instances.types();
  std::vector<bool> hides(types.size());
  for (TypeId type = 0; type < types.size(); ++type) {
    hides[type] =
        types.has(type, "INVISIBILITY") && !types.has(type, "CONTEXT_DEPENDENT_INVISIBILITY");
  }
  for (Index record = 0; record < instances.size(); ++record) {
    if (!hides[instances.type(record)]) continue;
    for (const Reference item : instances.references(record)) {
      if (item.record() == NO_RECORD) continue;
      hide(records, item.record());
      if (!instances.is(item.record(), "PRESENTATION_LAYER_ASSIGNMENT")) continue;
      for (const Reference assigned : instances.references(item.record())) {
        if (assigned.record() != NO_RECORD) hide(records, assigned.record());
      }
    }
  }
}

void HiddenItems::hide(const GeometryRecords& records, Index record) {
  hidden_.insert(record);
  const Instances& instances = records.instances();
  // In its context it hides a component there, and not the item everywhere.
  if (instances.is(record, "CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM")) return;
  if (!instances.is(record, "STYLED_ITEM") && !instances.is(record, "OVER_RIDING_STYLED_ITEM")) {
    return;
  }
  try {
    hidden_.insert(Attributes(records, record, "STYLED_ITEM", 1).record(1));
  } catch (const BadGeometry&) {
    return;  // It is of no item.
  }
}

}  // namespace Kessel::Geometry
