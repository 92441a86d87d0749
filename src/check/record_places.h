// Where each record stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "findings/place.h"
#include "model/paged_array.h"

namespace Kessel {

/// The place of each record by its instance number; numbers may be scattered.
class RecordPlaces {
 public:
  /// Sets the place of a record whose number is below `size`, that of the store.
  void set(std::uint32_t number, Place place, std::size_t size) {
    if (index_.size() < size) index_.grow(size);
    std::uint32_t& index = index_.edit(number);
    if (index == 0) {
      places_.emplace_back();
      index = static_cast<std::uint32_t>(places_.size());
    }
    places_[index - 1] = place;
  }

  /// The place of a record that was set.
  Place operator[](std::size_t number) const { return places_[index_[number] - 1]; }

 private:
  PagedArray<std::uint32_t> index_;  // by instance number: index in places_ + 1, 0 for none
  std::vector<Place> places_;
};

}  // namespace Kessel
