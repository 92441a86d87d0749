#include "structure/part_records.h"

#include <set>
#include <string_view>

namespace Kessel {

std::vector<std::uint32_t> part_records(const Store& store) {
  std::vector<std::uint32_t> records(store.parts.size());
  std::set<std::string_view> types;
  for (const Part* part : store.parts) types.insert(part->type());
  for (const std::string_view type : types) {
    for (const std::uint32_t number : store.get_ids(type)) {
      const auto* part = dynamic_cast<const Part*>(store.at(number));
      if (part != nullptr) records[part->list_position] = number;
    }
  }
  return records;
}

}  // namespace Kessel
