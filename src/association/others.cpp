// A home for the instances that no rule reached.
#include <cstddef>
#include <cstdint>
#include <queue>

#include "association/rules.h"
#include "model/slots.h"

namespace Kessel {

/// Lets every instance without a part take the parts of what it refers to, in ascending order of
/// numbers; one that gains nothing queues again behind the others. The visits are limited to five
/// per instance that was without a part at first, which may leave long chains partly unclaimed:
/// outputs depend on it.
void File::associate_others() const {
  std::queue<std::uint32_t> unclaimed;
  entities_.for_each_in_use([&](std::size_t id, const Entity* entity) {
    if (id != 0 && entity != nullptr && entity->part_numbers.empty()) {
      unclaimed.push(static_cast<std::uint32_t>(id));
    }
  });
  for (std::size_t visits = 5 * unclaimed.size(); visits > 0 && !unclaimed.empty(); --visits) {
    const std::uint32_t id = unclaimed.front();
    Entity* entity = entities_[id];
    if (entity->part_numbers.empty()) {
      for (const std::uint32_t reference : entity->references()) {
        adopt_parts(slot_at(entities_, reference), entity, ALL_PARTS);
      }
      if (entity->part_numbers.empty()) unclaimed.push(id);
    }
    unclaimed.pop();
  }
}

}  // namespace Kessel
