// How a record comes into the store: for the model and the reader.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "kessel/file.h"
#include "model/arena.h"

namespace Kessel {

/// Grows the store by the fewest whole blocks that cover `id`.
inline void File::make_room(unsigned id) {
  const std::size_t size = entities_.size();
  if (id < size) return;
  const std::size_t blocks = 1 + (id - size) / SLOT_BLOCK;
  entities_.grow(size + blocks * SLOT_BLOCK);
}

/// Constructs a record in the arena and puts it into slot `id`, which exists, in place of what was
/// there.
template <class Record, class... Args>
Record* File::store(unsigned id, Args&&... args) {
  Record* record = arena_->make<Record>(std::forward<Args>(args)...);
  Entity* replaced = std::exchange(entities_.edit(id), record);
  if (replaced != nullptr) replaced->~Entity();
  return record;
}

/// Packs `references` into the arena, behind the record that they belong to.
inline void File::set_references(Entity& entity, std::span<const unsigned> references) {
  if (references.empty()) return;
  auto* packed = static_cast<std::uint32_t*>(
      arena_->allocate(sizeof(std::uint32_t) + references.size_bytes()));
  packed[0] = static_cast<std::uint32_t>(references.size());
  std::copy(references.begin(), references.end(), packed + 1);
  entity.references_.view(packed);
}

}  // namespace Kessel
