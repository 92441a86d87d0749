// The rules that move parts along the references of one record.
#include "association/rules.h"

#include <utility>
#include <vector>

#include "findings/messages.h"
#include "model/slots.h"

namespace Kessel {

namespace {

/// Calls `rule` for every record of the type.
template <class Rule>
void for_each_record(const Store& store, std::string_view type, Rule rule) {
  for (Entity* record : store.get(type)) {
    if (record != nullptr) rule(*record);
  }
}

/// The same for several types, in ascending order.
template <class Rule>
void for_each_record(const Store& store, const TypeNameSet& types, Rule rule) {
  for (const std::string_view type : types) for_each_record(store, type, rule);
}

/// The record takes the parts of all its references.
void gather(Slots slots, Entity& record, KindFilter filter) {
  for (const std::uint32_t reference : record.references()) {
    adopt_parts(slot_at(slots, reference), &record, filter);
  }
}

/// The record spreads its parts to everything below it.
void spread(const Store& store, const Entity& record, KindFilter filter) {
  for (const std::uint32_t reference : record.references()) {
    propagate_down(store, &record, slot_at(store.entities, reference), filter);
  }
}

/// The record takes the parts of its `n`-th reference.
void take_from_child(Slots slots, Entity& record, std::uint16_t n, KindFilter filter) {
  const auto references = record.references();
  if (n >= references.size()) {
    messages() << "Got an out of range in 'propagate_from_child' while fetching child nb " << n
               << '\n';
    return;
  }
  adopt_parts(slot_at(slots, references[n]), &record, filter);
}

/// What most walks never exceed on one level, which saves them growing a list step by step.
constexpr std::size_t LEVEL_SIZE = 64;

/// Walks breadth first from `start` through everything that gains something: `gain(entity)` gives
/// an instance what is being spread and returns whether it gained any. Returns whether anything was
/// gained.
template <class Gain>
bool walk_down(Slots slots, Entity* start, Gain gain) {
  if (!gain(*start)) return false;
  const auto expand = [&](const Entity& gained, std::vector<Entity*>& below) {
    for (const std::uint32_t reference : gained.references()) {
      Entity* entity = slot_at(slots, reference);
      if (entity == nullptr) continue;
      __builtin_prefetch(entity);  // It is looked at when the next level is.
      below.push_back(entity);
    }
  };
  // One level at a time, so that what waits never is more than two levels.
  std::vector<Entity*> level;
  std::vector<Entity*> next;
  level.reserve(LEVEL_SIZE);
  next.reserve(LEVEL_SIZE);
  for (expand(*start, level); !level.empty(); level.swap(next), next.clear()) {
    for (Entity* entity : level) {
      if (gain(*entity)) expand(*entity, next);
    }
  }
  return true;
}

bool passes(const Part* part, KindFilter filter) {
  return filter == ALL_PARTS || part->part_kind == filter;
}

/// The one part of `source` that passes the filter; null when there are none or several.
Part* only_part(const Entity& source, KindFilter filter) {
  Part* only = nullptr;
  for (const auto [part, number] : source.part_numbers.entries()) {
    if (!passes(part, filter)) continue;
    if (only != nullptr) return nullptr;
    only = part;
  }
  return only;
}

}  // namespace

bool adopt_parts(const Entity* source, Entity* target, KindFilter filter) {
  if (source == nullptr || target == nullptr) return false;
  return target->part_numbers.adopt(
      source->part_numbers, [filter](const Part* part) { return passes(part, filter); },
      [](Part* part) { return ++part->last_instance_number; });
}

bool propagate_down(const Store& store, const Entity* source, Entity* start, KindFilter filter) {
  if (source == nullptr || start == nullptr) return false;
  // Fast path: nearly always one part is spread, into instances that hold none yet.
  if (Part* part = only_part(*source, filter)) {
    return walk_down(store.entities, start, [part](Entity& entity) {
      if (entity.part_numbers.contains(part)) return false;
      entity.part_numbers.add(part, ++part->last_instance_number);
      return true;
    });
  }
  return walk_down(store.entities, start,
                   [=](Entity& entity) { return adopt_parts(source, &entity, filter); });
}

void propagate_from_child(const Store& store, std::string_view type, std::uint16_t n,
                          KindFilter filter) {
  for_each_record(store, type,
                  [&](Entity& record) { take_from_child(store.entities, record, n, filter); });
}

void propagate_from_children(const Store& store, std::string_view type, KindFilter filter) {
  for_each_record(store, type, [&](Entity& record) { gather(store.entities, record, filter); });
}

void propagate_to_descendants(const Store& store, std::string_view type, KindFilter filter) {
  for_each_record(store, type, [&](Entity& record) { spread(store, record, filter); });
}

void propagate_both_ways(const Store& store, std::string_view type, KindFilter filter) {
  for_each_record(store, type, [&](Entity& record) {
    gather(store.entities, record, filter);
    for (const std::uint32_t reference : record.references()) {
      adopt_parts(&record, slot_at(store.entities, reference), filter);
    }
  });
}

void gather_and_spread(const Store& store, std::string_view type, KindFilter filter) {
  for_each_record(store, type, [&](Entity& record) {
    gather(store.entities, record, filter);
    spread(store, record, filter);
  });
}

void propagate_from_child_and_down(const Store& store, std::string_view type, std::uint16_t n,
                                   KindFilter filter) {
  for_each_record(store, type, [&](Entity& record) {
    take_from_child(store.entities, record, n, filter);
    spread(store, record, filter);
  });
}

void propagate_to_typed_children(const Store& store, const TypeNameSet& types,
                                 const TypeNameSet& child_types, ChildTypes mode,
                                 KindFilter filter) {
  const TypeNameIndex inside_types(child_types.begin(), child_types.end());
  for_each_record(store, types, [&](Entity& record) {
    for (const std::uint32_t reference : record.references()) {
      Entity* child = slot_at(store.entities, reference);
      if (child == nullptr) continue;
      const bool inside = inside_types.contains(child->type());
      if (inside == (mode == ChildTypes::inside)) propagate_down(store, &record, child, filter);
    }
  });
}

void propagate_from_child(const Store& store, const TypeNameSet& types, std::uint16_t n,
                          KindFilter filter) {
  for (const std::string_view type : types) propagate_from_child(store, type, n, filter);
}

void propagate_from_children(const Store& store, const TypeNameSet& types, KindFilter filter) {
  for (const std::string_view type : types) propagate_from_children(store, type, filter);
}

void gather_and_spread(const Store& store, const TypeNameSet& types, KindFilter filter) {
  for (const std::string_view type : types) gather_and_spread(store, type, filter);
}

void propagate_from_child_and_down(const Store& store, const TypeNameSet& types, std::uint16_t n,
                                   KindFilter filter) {
  for (const std::string_view type : types) propagate_from_child_and_down(store, type, n, filter);
}

}  // namespace Kessel
