// Links assemblies and their components through the usage records.
#include "structure/links.h"

#include <string_view>

#include "findings/messages.h"
#include "model/slots.h"

namespace Kessel {

void link_parts(Store& store) {
  for (const std::string_view type : LINK_TYPES) {
    for (const Entity* usage : store.get(type)) {
      if (usage == nullptr) continue;
      const auto references = usage->references();
      if (references.size() < 2) {
        messages() << "Got a malformed " << type << "\nIt does not have two childs.\n";
        continue;
      }
      // Relating and related product definition (ISO 10303-44); a component that is used twice is
      // listed twice.
      auto* parent = dynamic_cast<Part*>(slot_at(store.entities, references[0]));
      auto* child = dynamic_cast<Part*>(slot_at(store.entities, references[1]));
      if (parent == nullptr || child == nullptr) continue;
      parent->add_child_part(child);
      child->add_parent_part(parent);
    }
  }
}

}  // namespace Kessel
