#include "instances/number_index.h"

#include <bit>

namespace Kessel {

NumberIndex::NumberIndex(std::size_t records, std::uint64_t largest) {
  const std::uint64_t most_dense = std::uint64_t{records} * 4 + 1024;
  if (largest < most_dense) {
    dense_ = Column<Index>(static_cast<std::size_t>(largest) + 1, NO_RECORD);
  } else {
    slots_ = Column<Slot>(std::bit_ceil(records * 2 + 1));
  }
}

std::size_t NumberIndex::slot_of(std::uint64_t number) const {
  const std::size_t mask = slots_.size() - 1;
  std::uint64_t hash = number * 0x9E37'79B9'7F4A'7C15;
  hash ^= hash >> 32;
  std::size_t place = static_cast<std::size_t>(hash) & mask;
  while (slots_[place].record != NO_RECORD && slots_[place].number != number) {
    place = (place + 1) & mask;
  }
  return place;
}

Index NumberIndex::enter(std::uint64_t number, Index record) {
  Index& known = dense_.size() != 0 ? dense_[number] : slots_[slot_of(number)].record;
  if (known != NO_RECORD) return known;
  if (dense_.size() == 0) slots_[slot_of(number)].number = number;
  known = record;
  return NO_RECORD;
}

Index NumberIndex::find_scattered(std::uint64_t number) const {
  return slots_[slot_of(number)].record;
}

}  // namespace Kessel
