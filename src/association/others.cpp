// A home for the instances that no rule reached.
#include <cstddef>
#include <cstdint>
#include <queue>

#include "association/associate.h"
#include "association/rules.h"
#include "model/slots.h"

namespace Kessel {

std::size_t associate_others(const Store& store) {
  std::queue<std::uint32_t> unclaimed;
  store.entities.for_each_in_use([&](std::size_t id, const Entity* entity) {
    if (id != 0 && entity != nullptr && entity->part_numbers.empty()) {
      unclaimed.push(static_cast<std::uint32_t>(id));
    }
  });
  const std::size_t most_visits = 5 * unclaimed.size();
  std::size_t visits = 0;
  for (; visits < most_visits && !unclaimed.empty(); ++visits) {
    const std::uint32_t id = unclaimed.front();
    Entity* entity = store.entities[id];
    if (entity->part_numbers.empty()) {
      for (const std::uint32_t reference : entity->references()) {
        adopt_parts(slot_at(store.entities, reference), entity, ALL_PARTS);
      }
      if (entity->part_numbers.empty()) unclaimed.push(id);
    }
    unclaimed.pop();
  }
  return visits;
}

}  // namespace Kessel
