// The bounds-checked look at the store that every pass uses.
#pragma once

#include <cstdint>
#include <stdexcept>

#include "kessel/entity.h"
#include "model/paged_array.h"

namespace Kessel {

/// The slots of a store, indexed by instance number; null where no record has that number.
using Slots = const PagedArray<Entity*>&;

/// Ends the run over a reference beyond the store.
[[noreturn]] inline void throw_beyond_store() {
  throw std::out_of_range("invalid vector subscript");
}

/// Slot `id`. Throws `std::out_of_range` "invalid vector subscript" beyond the last slot.
inline Entity* slot_at(Slots slots, std::uint32_t id) {
  if (id >= slots.size()) throw_beyond_store();
  return slots[id];
}

}  // namespace Kessel
