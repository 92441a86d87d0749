// Links assemblies and their components through the usage records.
#include <iostream>
#include <string_view>

#include "kessel/file.h"
#include "model/slots.h"

namespace Kessel {

namespace {

// In the order in which components are listed: all links of one type, then those of the next.
constexpr std::string_view LINK_TYPES[] = {
    "NEXT_ASSEMBLY_USAGE_OCCURRENCE",
    "ASSEMBLY_COMPONENT_USAGE",
    "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE",
};

}  // namespace

void File::link_parts() {
  for (const std::string_view type : LINK_TYPES) {
    for (const Entity* usage : get(type)) {
      if (usage == nullptr) continue;
      const auto references = usage->references();
      if (references.size() < 2) {
        std::cerr << "Got a malformed " << type << "\nIt does not have two childs.\n";
        continue;
      }
      // Relating and related product definition (ISO 10303-44); a component that is used twice is
      // listed twice.
      auto* parent = dynamic_cast<Part*>(slot_at(entities_, references[0]));
      auto* child = dynamic_cast<Part*>(slot_at(entities_, references[1]));
      if (parent == nullptr || child == nullptr) continue;
      parent->add_child_part(child);
      child->add_parent_part(parent);
    }
  }
}

}  // namespace Kessel
