// Tells assemblies from parts with geometry, finds or makes the root, and names every file.
#include <algorithm>

#include "kessel/file.h"
#include "model/messages.h"
#include "model/slots.h"
#include "structure/definition_search.h"
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

/// Makes every part a leaf whose own shape carries geometry. A shape definition representation that
/// leads to no part is passed over before its representation is looked at.
void File::classify_by_geometry() {
  const TypeNameSet names = placement_and_context_types(types_);
  const TypeNameIndex no_geometry(names.begin(), names.end());
  ReachabilitySearch search(entities_);
  for (const Entity* link : get("SHAPE_DEFINITION_REPRESENTATION")) {
    if (link == nullptr) continue;
    const std::uint32_t definition = find_definition(search, link->get_reference(0));
    auto* part = dynamic_cast<Part*>(slot_at(entities_, definition));
    if (part == nullptr) continue;
    const Entity* representation = slot_at(entities_, link->get_reference(1));
    if (representation == nullptr) continue;
    if (holds_geometry(entities_, *representation, no_geometry)) part->part_kind = LEAF_PART;
  }
}

void File::generate_root() {
  root_ = new Part("PRODUCT_DEFINITION");
  root_generated_ = true;
  root_->path = "Root.stp";
  root_->part_kind = ASSEMBLY_PART;
  add_part(root_);
}

void File::find_parts_types(std::string (*decode)(std::string_view)) {
  std::vector<Part*> roots;
  for (Part* part : parts_) {
    if (part->parents.empty()) roots.push_back(part);
    part->part_kind = part->children.empty() ? LEAF_PART : ASSEMBLY_PART;
  }
  classify_by_geometry();
  for (Part* part : parts_) part->resolve_name(this, decode);

  if (roots.empty()) {
    messages() << "No root part found. It implies not part in the file or a cyclic part tree.\n"
                  "Stopping the algorithm.\n";
    return;
  }
  if (roots.size() == 1 && roots.front()->part_kind != LEAF_PART) {
    root_ = roots.front();
  } else {
    generate_root();
  }
}

}  // namespace Kessel
