// How a record comes into the store: for the model and the reader.
#pragma once

#include <utility>

#include "kessel/file.h"
#include "model/arena.h"

namespace Kessel {

/// Constructs a record in the arena and puts it into slot `id`, which exists, in place of what was
/// there.
template <class Record, class... Args>
Record* File::store(unsigned id, Args&&... args) {
  Record* record = arena_->make<Record>(std::forward<Args>(args)...);
  Entity* replaced = std::exchange(entities_.edit(id), record);
  if (replaced != nullptr) replaced->~Entity();
  return record;
}

}  // namespace Kessel
