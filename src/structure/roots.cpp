// Tells assemblies from parts with geometry, finds or makes the root, and names every file.
#include "structure/roots.h"

#include <algorithm>

#include "findings/messages.h"
#include "model/slots.h"
#include "structure/definition_search.h"
#include "structure/part_names.h"
#include "structure/reachability.h"
#include "structure/type_names.h"

namespace Kessel {

namespace {

/// Whether the representation holds an item that is neither a placement nor a context.
bool holds_geometry(Slots slots, const Entity& representation, const TypeNameIndex& no_geometry) {
  const auto references = representation.references();
  return std::any_of(references.begin(), references.end(), [&](std::uint32_t reference) {
    const Entity* item = slot_at(slots, reference);
    return item != nullptr && !no_geometry.contains(item->type());
  });
}

}  // namespace

void classify_by_geometry(Store& store) {
  const TypeNameSet names = placement_and_context_types(store.types);
  const TypeNameIndex no_geometry(names.begin(), names.end());
  ReachabilitySearch search(store.entities);
  for (const Entity* link : store.get("SHAPE_DEFINITION_REPRESENTATION")) {
    if (link == nullptr) continue;
    const std::uint32_t definition = find_definition(search, link->get_reference(0));
    auto* part = dynamic_cast<Part*>(slot_at(store.entities, definition));
    if (part == nullptr) continue;
    const Entity* representation = slot_at(store.entities, link->get_reference(1));
    if (representation == nullptr) continue;
    if (holds_geometry(store.entities, *representation, no_geometry)) part->part_kind = LEAF_PART;
  }
}

void generate_root(Store& store) {
  store.root = new Part("PRODUCT_DEFINITION");
  store.root_generated = true;
  store.root->path = "Root.stp";
  store.root->part_kind = ASSEMBLY_PART;
  store.add_part(store.root);
}

void find_parts_types(Store& store) {
  std::vector<Part*> roots;
  for (Part* part : store.parts) {
    if (part->parents.empty()) roots.push_back(part);
    part->part_kind = part->children.empty() ? LEAF_PART : ASSEMBLY_PART;
  }
  classify_by_geometry(store);
  for (Part* part : store.parts) resolve_name(*part, store.entities);

  if (roots.empty()) {
    messages() << "No root part found. It implies not part in the file or a cyclic part tree.\n"
                  "Stopping the algorithm.\n";
    return;
  }
  if (roots.size() == 1 && roots.front()->part_kind != LEAF_PART) {
    store.root = roots.front();
  } else {
    generate_root(store);
  }
}

}  // namespace Kessel
