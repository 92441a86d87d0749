// From instance numbers to positions.
#pragma once

#include <cstdint>

#include "instances/column.h"

namespace Kessel {

/// Position of a record among those of its file, in the order of the file.
using Index = std::uint32_t;

/// No record.
inline constexpr Index NO_RECORD = 0x7FFF'FFFF;

/// Finds records by their numbers. Where the numbers are dense, as they nearly always are, it is an
/// array; scattered ones go into a hash table, so that memory goes by the records in either case.
class NumberIndex {
 public:
  /// Of records whose numbers are at most `largest`.
  NumberIndex(std::size_t records, std::uint64_t largest);

  /// Enters a record. Returns the one that has the number already, which stays; else NO_RECORD.
  Index enter(std::uint64_t number, Index record);

  /// The record with that number, or NO_RECORD.
  Index find(std::uint64_t number) const {
    if (dense_.size() != 0) return number < dense_.size() ? dense_[number] : NO_RECORD;
    return find_scattered(number);
  }

  std::uint64_t bytes() const { return dense_.bytes() + slots_.bytes(); }

 private:
  struct Slot {
    std::uint64_t number = 0;
    Index record = NO_RECORD;
  };
  std::size_t slot_of(std::uint64_t number) const;
  Index find_scattered(std::uint64_t number) const;

  Column<Index> dense_;
  Column<Slot> slots_;  // as many as a power of two, at most half of them taken
};

}  // namespace Kessel
