// The order of the structure passes.
#include "structure/process_parts.h"

#include "findings/messages.h"
#include "structure/discovery.h"
#include "structure/links.h"
#include "structure/part_names.h"
#include "structure/roots.h"

namespace Kessel {

void process_parts(Store& store, std::string (*decode)(std::string_view)) {
  find_and_create_parts(store);
  if (store.parts.size() == 1) {
    messages() << "Only one part was found in the file !\n"
                  "Impossible to proceed with the splitting algorithm.\n";
    return;
  }
  link_parts(store);
  find_parts_types(store);
  if (store.name_style != NameStyle::record) name_after_products(store, decode);
}

}  // namespace Kessel
