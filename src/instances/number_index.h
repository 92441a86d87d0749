// From instance numbers to positions.
#pragma once

#include <cstdint>
#include <vector>

#include "instances/column.h"

namespace Kessel {

/// Position of a record among those of its file, in the order of the file.
using Index = std::uint32_t;

/// No record.
inline constexpr Index NO_RECORD = 0x7FFF'FFFF;

/// Two records under one number.
struct Repeated {
  Index first;   ///< the first of all with that number
  Index second;  ///< a later one
  bool operator==(const Repeated&) const = default;
};

/// Finds records by their numbers. Where the numbers are dense, as they nearly always are, it is an
/// array; scattered ones are sorted, so that memory goes by the records in either case, and no
/// choice of numbers makes it slow.
class NumberIndex {
 public:
  /// Of no records.
  NumberIndex() : NumberIndex(0, 0, 0) {}
  /// Of at most so many records, whose numbers are from `smallest` to `largest`.
  NumberIndex(std::size_t records, std::uint64_t smallest, std::uint64_t largest);
  /// What such an index takes.
  static std::uint64_t bytes_for(std::size_t records, std::uint64_t smallest,
                                 std::uint64_t largest);

  /// Enters a record; they come in ascending order.
  void enter(std::uint64_t number, Index record) {
    if (dense_.size() == 0) return scattered_.push_back({number, record});
    Index& known = dense_[static_cast<std::size_t>(number - smallest_)];
    if (known == NO_RECORD) {
      known = record;
    } else {
      repeated_.push_back({known, record});
    }
  }
  /// Ends the entering, before which nothing can be found. Returns the records whose number another
  /// one has had before, by ascending `second`; they cannot be found.
  std::vector<Repeated> finish();

  /// Makes a number that can be found lead to another record.
  void lead(std::uint64_t number, Index record);

  /// The record with that number, or NO_RECORD.
  Index find(std::uint64_t number) const {
    if (dense_.size() == 0) return find_scattered(number);
    number -= smallest_;  // Smaller ones become very large.
    return number < dense_.size() ? dense_[static_cast<std::size_t>(number)] : NO_RECORD;
  }

  std::uint64_t bytes() const { return dense_.bytes() + scattered_.bytes(); }

 private:
  struct Entry {
    std::uint64_t number = 0;
    Index record = NO_RECORD;
  };
  Index find_scattered(std::uint64_t number) const;

  std::uint64_t smallest_;
  Column<Index> dense_;
  Column<Entry> scattered_;  // by number
  std::vector<Repeated> repeated_;
};

}  // namespace Kessel
