// The store: slots by instance number, numbers by type.
#include "kessel/file.h"

#include <utility>

#include "model/slots.h"
#include "model/store.h"

namespace Kessel {

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes paths by value.
File::File(std::filesystem::path path)
    : input_(path, std::ios::in | std::ios::binary),
      arena_(std::make_unique<Arena>()),
      entities_(SLOT_BLOCK) {}

File::~File() {
  // Records live in the arena, so they are destroyed here and freed with it.
  entities_.for_each_in_use([](std::size_t, Entity* entity) {
    if (entity != nullptr) entity->~Entity();
  });
  if (root_generated_) delete root_;
}

Entity* File::create_entity(unsigned id) {
  make_room(id);
  return store<Entity>(id);
}

Entity* File::create_entity(unsigned id, std::string_view type) {
  make_room(id);
  return store<EntityWithType>(id, add_type(id, type));
}

Entity* File::create_entity(unsigned id, std::string_view type, std::string_view attribute) {
  make_room(id);
  return store<EntityWithAttr>(id, add_type(id, type), attribute);
}

/// The store's own copy of a type name, and the list of the numbers under it. Both stay where they
/// are as long as the store lives.
std::pair<std::string_view, File::Ids*> File::intern_type(std::string_view type) {
  auto entry = ids_by_type_.find(type);
  if (entry == ids_by_type_.end()) {
    const std::string& name = *types_.emplace(type).first;
    entry = ids_by_type_.try_emplace(name).first;
  }
  return {entry->first, &entry->second};
}

std::string_view File::add_type(unsigned id, std::string_view type) {
  const auto [name, ids] = intern_type(type);
  ids->push_back(id);
  return name;
}

void File::add_part(Part* part) {
  part->list_position = static_cast<std::uint32_t>(parts_.size());
  parts_.push_back(part);
}

const std::set<std::string>& File::types() const {
  return types_;
}

Entity* File::at(unsigned id) const {
  return slot_at(entities_, id);
}

std::vector<Entity*> File::get(std::string_view type) const {
  std::vector<Entity*> records;
  if (const auto entry = ids_by_type_.find(type); entry != ids_by_type_.end()) {
    records.reserve(entry->second.size());
    for (const unsigned id : entry->second) records.push_back(at(id));
  }
  return records;
}

std::set<unsigned> File::get_ids(std::string_view type) const {
  const auto entry = ids_by_type_.find(type);
  if (entry == ids_by_type_.end()) return {};
  return {entry->second.begin(), entry->second.end()};
}

const std::vector<Part*>& File::parts() const {
  return parts_;
}

Part* File::root_part() const {
  return root_;
}

}  // namespace Kessel
