// Names files after products.
#include "encoding/utf8_path.h"
#include "kessel/encoding.h"
#include "naming/file_stem.h"
#include "naming/unique_names.h"
#include "structure/part_names.h"

namespace Kessel {

namespace {

/// The number of the record that a part is called after: the product behind its formation, or the
/// representation in a mapped item's map, behind the map's origin. 0 where there is none.
unsigned named_after(const Store& store, const Part& part) {
  if (part.references().empty()) return 0;
  const Entity* middle = store.at(part.references().front());
  const std::size_t place = part.type() == "MAPPED_ITEM" ? 1 : 0;
  if (middle == nullptr || middle->references().size() <= place) return 0;
  return middle->references()[place];
}

}  // namespace

void name_after_products(Store& store, std::string (*decode)(std::string_view)) {
  if (decode == nullptr) decode = decode_step_to_utf8;
  const FileNameSet set =
      store.name_style == NameStyle::product ? FileNameSet::ascii : FileNameSet::unicode;
  UniqueNames unique;
  for (Part* part : store.parts) {
    std::string stem;
    const unsigned number = named_after(store, *part);
    if (const auto name = store.names.find(number); name != store.names.end()) {
      stem = file_stem(decode(name->second), set);
    }
    if (stem.empty() && number != 0 && !part->path.empty()) {
      stem = "part " + std::to_string(number);
    }
    if (stem.empty()) stem = fspath_to_utf8(part->path.stem());
    if (!stem.empty()) part->path = path_of_utf8(unique.take(stem));
  }
  store.names.clear();
}

}  // namespace Kessel
