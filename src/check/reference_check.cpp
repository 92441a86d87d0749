// Checks what the records refer to.
#include "check/reference_check.h"

#include <algorithm>
#include <string>

#include "check/cycles.h"

namespace Kessel {

namespace {

void find_missing_instances(File& store, const RecordPlaces& places, FindingList& findings) {
  const PagedArray<Entity*>& slots = store.entities();
  std::uint32_t highest = 0;
  slots.for_each_in_use([&](std::size_t id, const Entity* record) {
    if (record == nullptr) return;
    for (const std::uint32_t reference : record->references()) {
      const bool beyond = reference >= slots.size();
      if (!beyond && slots[reference] != nullptr) continue;
      highest = std::max(highest, reference);
      const auto number = static_cast<std::uint32_t>(id);
      std::string sentence =
          "#" + std::to_string(number) + " refers to #" + std::to_string(reference);
      if (beyond) {
        findings.add(FindingKind::instance_beyond_store, places[id], number,
                     sentence +
                         ", which is far beyond the highest number that is there; a split "
                         "may fail over it.");
      } else {
        findings.add(FindingKind::missing_instance, places[id], number,
                     sentence + ", which is not there.");
      }
    }
  });
  // An empty record at the highest missing number is as good as none.
  if (highest >= slots.size()) store.create_entity(highest);
}

void find_reference_cycles(const File& store, const RecordPlaces& places, FindingList& findings) {
  const PagedArray<Entity*>& slots = store.entities();
  CycleSearch search(slots.size(), [&](std::uint32_t number) {
    const Entity* record = slots[number];
    return record == nullptr ? std::span<const std::uint32_t>() : record->references();
  });
  slots.for_each_in_use([&](std::size_t id, const Entity* record) {
    if (record != nullptr) search.visit(static_cast<std::uint32_t>(id));
  });
  for (const Cycle& cycle : search.cycles()) {
    std::string sentence = "#" + std::to_string(cycle.lowest);
    if (cycle.size == 1) {
      sentence += " refers to itself.";
    } else {
      sentence += " and " + with_commas(cycle.size - 1) +
                  (cycle.size == 2 ? " other record refer" : " other records refer") +
                  " to each other in a circle.";
    }
    findings.add(FindingKind::reference_cycle, places[cycle.lowest], cycle.lowest,
                 std::move(sentence));
  }
}

}  // namespace

void check_references(File& store, const RecordPlaces& places, FindingList& findings) {
  find_missing_instances(store, places, findings);
  find_reference_cycles(store, places, findings);
}

}  // namespace Kessel
