// The rules that move parts along the references of one record.
#include "association/rules.h"

#include <iostream>
#include <utility>
#include <vector>

#include "model/slots.h"

namespace Kessel {

namespace {

/// Calls `rule` for every record of the type.
template <class Rule>
void for_each_record(const File& file, std::string_view type, Rule rule) {
  for (Entity* record : file.get(type)) {
    if (record != nullptr) rule(*record);
  }
}

/// The record takes the parts of all its references.
void gather(Slots slots, Entity& record, KindFilter filter) {
  for (const std::uint32_t reference : record.references()) {
    adopt_parts(slot_at(slots, reference), &record, filter);
  }
}

/// The record spreads its parts to everything below it.
void spread(const File& file, const Entity& record, KindFilter filter) {
  for (const std::uint32_t reference : record.references()) {
    propagate_down(file, &record, slot_at(file.entities(), reference), filter);
  }
}

/// The record takes the parts of its `n`-th reference.
void take_from_child(Slots slots, Entity& record, std::uint16_t n, KindFilter filter) {
  const auto references = record.references();
  if (n >= references.size()) {
    std::cerr << "Got an out of range in 'propagate_from_child' while fetching child nb " << n
              << '\n';
    return;
  }
  adopt_parts(slot_at(slots, references[n]), &record, filter);
}

/// Whether `target` would certainly gain nothing from `source`. Fast path for the walk down: most
/// references lead to an instance of the one part that is being spread.
bool surely_holds_all(const Entity& source, const Entity& target) {
  return source.part_numbers.size() == 1 && target.part_numbers.size() == 1 &&
         source.part_numbers.begin()->first == target.part_numbers.begin()->first;
}

}  // namespace

bool adopt_parts(const Entity* source, Entity* target, KindFilter filter) {
  if (source == nullptr || target == nullptr) return false;
  return target->part_numbers.adopt(
      source->part_numbers,
      [filter](const Part* part) { return filter == ALL_PARTS || part->part_kind == filter; },
      [](Part* part) { return ++part->last_instance_number; });
}

bool propagate_down(const File& file, const Entity* source, Entity* start, KindFilter filter) {
  if (!adopt_parts(source, start, filter)) return false;
  Slots slots = file.entities();
  // Breadth first, one level at a time: `level` gained a part, `next` is what it refers to.
  std::vector<Entity*> level = {start};
  std::vector<Entity*> next;
  while (!level.empty()) {
    next.clear();
    for (const Entity* gained : level) {
      for (const std::uint32_t reference : gained->references()) {
        Entity* below = slot_at(slots, reference);
        if (below != nullptr && !surely_holds_all(*source, *below)) next.push_back(below);
      }
    }
    level.clear();
    for (Entity* below : next) {
      if (adopt_parts(source, below, filter)) level.push_back(below);
    }
  }
  return true;
}

void propagate_from_child(const File& file, std::string_view type, std::uint16_t n,
                          KindFilter filter) {
  for_each_record(file, type, [&](Entity& record) {
    take_from_child(file.entities(), record, n, filter);
  });
}

void propagate_from_children(const File& file, std::string_view type, KindFilter filter) {
  for_each_record(file, type, [&](Entity& record) { gather(file.entities(), record, filter); });
}

void propagate_to_descendants(const File& file, std::string_view type, KindFilter filter) {
  for_each_record(file, type, [&](Entity& record) { spread(file, record, filter); });
}

void propagate_both_ways(const File& file, std::string_view type, KindFilter filter) {
  for_each_record(file, type, [&](Entity& record) {
    gather(file.entities(), record, filter);
    for (const std::uint32_t reference : record.references()) {
      adopt_parts(&record, slot_at(file.entities(), reference), filter);
    }
  });
}

void gather_and_spread(const File& file, std::string_view type, KindFilter filter) {
  for_each_record(file, type, [&](Entity& record) {
    gather(file.entities(), record, filter);
    spread(file, record, filter);
  });
}

void propagate_from_child_and_down(const File& file, std::string_view type, std::uint16_t n,
                                   KindFilter filter) {
  for_each_record(file, type, [&](Entity& record) {
    take_from_child(file.entities(), record, n, filter);
    spread(file, record, filter);
  });
}

void propagate_to_typed_children(const File& file, std::string_view type,
                                 const TypeNameSet& child_types, ChildTypes mode,
                                 KindFilter filter) {
  for_each_record(file, type, [&](Entity& record) {
    for (const std::uint32_t reference : record.references()) {
      Entity* child = slot_at(file.entities(), reference);
      if (child == nullptr) continue;
      const bool inside = child_types.contains(child->type());
      if (inside == (mode == ChildTypes::inside)) propagate_down(file, &record, child, filter);
    }
  });
}

}  // namespace Kessel
