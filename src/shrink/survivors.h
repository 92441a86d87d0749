// The numbers of the records that stay.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "instances/column.h"
#include "instances/instances.h"

namespace Kessel::Shrink {

/// Which records stay, and under which numbers: their own ones, or from 1 in the order of the file.
class Survivors {
 public:
  /// Those of `instances`, which must outlive it, that are no repeated ones.
  Survivors(const Instances& instances, bool renumber);

  bool stays(Index record) const { return instances_.type(record) != TypeTable::REPEATED; }
  /// How many stay.
  std::uint64_t count() const { return count_; }

  /// The number of a record that stays.
  std::uint64_t number(Index record) const {
    return numbers_.empty() ? instances_.number(record) : numbers_[record];
  }
  /// The number for one that no record has in the file: one that no record will have.
  std::uint64_t of_missing(std::uint64_t number);

 private:
  const Instances& instances_;
  std::uint64_t count_ = 0;
  Column<std::uint32_t> numbers_;  // where they are new
  std::uint32_t last_ = 0;
  std::unordered_map<std::uint64_t, std::uint64_t> missing_;
};

}  // namespace Kessel::Shrink
