// The store: slots by instance number, numbers by type.
#include "model/store.h"

#include <utility>

#include "model/slots.h"

namespace Kessel {

Store::Store(const std::filesystem::path& path)
    : input(path, std::ios::in | std::ios::binary), entities(SLOT_BLOCK) {}

Store::~Store() {
  // Records live in the arena, so they are destroyed here and freed with it.
  entities.for_each_in_use([](std::size_t, Entity* entity) {
    if (entity != nullptr) entity->~Entity();
  });
  for (Entity* entity : replaced) entity->~Entity();
  if (root_generated) delete root;
}

/// Prepares slot `id` for a record of a host's.
void Store::clear_slot(unsigned id) {
  make_room(id);
  if (Entity* before = std::exchange(entities.edit(id), nullptr)) replaced.push_back(before);
}

Entity* Store::create_entity(unsigned id) {
  clear_slot(id);
  return put<Entity>(id);
}

Entity* Store::create_entity(unsigned id, std::string_view type) {
  clear_slot(id);
  return put<EntityWithType>(id, add_type(id, type));
}

Entity* Store::create_entity(unsigned id, std::string_view type, std::string_view attribute) {
  clear_slot(id);
  return put<EntityWithAttr>(id, add_type(id, type), attribute);
}

std::pair<std::string_view, Store::Ids*> Store::intern_type(std::string_view type) {
  auto entry = ids_by_type.find(type);
  if (entry == ids_by_type.end()) {
    const std::string& name = *types.emplace(type).first;
    entry = ids_by_type.try_emplace(name).first;
  }
  return {entry->first, &entry->second};
}

std::string_view Store::add_type(unsigned id, std::string_view type) {
  const auto [name, ids] = intern_type(type);
  ids->push_back(id);
  return name;
}

void Store::add_part(Part* part) {
  part->list_position = static_cast<std::uint32_t>(parts.size());
  parts.push_back(part);
}

Entity* Store::at(unsigned id) const {
  return slot_at(entities, id);
}

std::vector<Entity*> Store::get(std::string_view type) const {
  std::vector<Entity*> records;
  if (const auto entry = ids_by_type.find(type); entry != ids_by_type.end()) {
    records.reserve(entry->second.size());
    for (const unsigned id : entry->second) records.push_back(at(id));
  }
  return records;
}

std::set<unsigned> Store::get_ids(std::string_view type) const {
  const auto entry = ids_by_type.find(type);
  if (entry == ids_by_type.end()) return {};
  return {entry->second.begin(), entry->second.end()};
}

}  // namespace Kessel
