// The ordered map behind Entity::part_numbers: small where an instance belongs to one part, which
// is nearly always, and quick to merge where it belongs to thousands.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace Kessel {

/// An ordered map from `Owner*` to an instance number.
///
/// Keys ascend by `Owner::list_position` (ties by address), so iteration is the same on every run
/// whatever addresses the allocator gives. The map observes its owners and never deletes them; an
/// owner's `list_position` must not change while it is a key. One entry is held in place; more live
/// in one sorted block on the heap. 16 bytes, movable, not copyable.
template <class Owner>
class NumberMap {
 public:
  using key_type = Owner*;
  using mapped_type = std::uint32_t;
  using value_type = std::pair<Owner*, std::uint32_t>;

  /// Walks the entries in order; dereferencing yields a (key, number) pair by value.
  /// Invalidated by every insertion.
  class const_iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = NumberMap::value_type;
    using difference_type = std::ptrdiff_t;
    using pointer = const value_type*;
    using reference = value_type;
    /// Keeps the pair alive while `it->first` is evaluated.
    struct Arrow {
      value_type entry;
      const value_type* operator->() const { return &entry; }
    };

    const_iterator() = default;
    value_type operator*() const { return map_->entry(index_); }
    Arrow operator->() const { return {map_->entry(index_)}; }
    const_iterator& operator++() {
      ++index_;
      return *this;
    }
    const_iterator operator++(int) {
      const_iterator before = *this;
      ++index_;
      return before;
    }
    bool operator==(const const_iterator&) const = default;

   private:
    friend class NumberMap;
    const_iterator(const NumberMap* map, std::uint32_t index) : map_(map), index_(index) {}
    const NumberMap* map_ = nullptr;
    std::uint32_t index_ = 0;
  };
  using iterator = const_iterator;

  NumberMap() = default;
  NumberMap(NumberMap&& other) noexcept
      : where_(other.where_), size_(other.size_), number_(other.number_) {
    other.size_ = 0;
  }
  NumberMap& operator=(NumberMap&& other) noexcept {
    std::swap(where_, other.where_);
    std::swap(size_, other.size_);
    std::swap(number_, other.number_);
    return *this;
  }
  NumberMap(const NumberMap&) = delete;
  NumberMap& operator=(const NumberMap&) = delete;
  ~NumberMap() {
    if (size_ > 1) delete[] where_.block;
  }

  bool empty() const { return size_ == 0; }
  std::size_t size() const { return size_; }
  const_iterator begin() const { return {this, 0}; }
  const_iterator end() const { return {this, size_}; }

  /// The entry of `owner`, or `end()`.
  const_iterator find(Owner* owner) const {
    const std::uint32_t index = index_of(owner);
    return index == NONE ? end() : const_iterator(this, index);
  }
  bool contains(Owner* owner) const { return index_of(owner) != NONE; }

  /// The number of `owner`; throws `std::out_of_range` "invalid map<K, T> key" when it has none.
  std::uint32_t at(Owner* owner) const {
    const std::uint32_t number = number_or_zero(owner);
    if (number != 0) return number;
    const std::uint32_t index = index_of(owner);
    if (index == NONE) throw std::out_of_range("invalid map<K, T> key");
    return entry(index).second;
  }

  /// The number of `owner`, or 0 when it has none: the writer's question for every reference.
  std::uint32_t number_or_zero(Owner* owner) const {
    if (size_ == 1) return where_.owner == owner ? number_ : 0;  // Fast path: one part.
    return size_ == 0 ? 0 : number_in_block(owner);
  }

  /// Adds (owner, number) unless `owner` has an entry already. Returns the entry of `owner` and
  /// whether it was added.
  std::pair<const_iterator, bool> emplace(Owner* owner, std::uint32_t number) {
    const std::uint32_t index = lower_bound(owner);
    if (index < size_ && entry(index).first == owner) return {const_iterator(this, index), false};
    open_gap(index);
    put(index, owner, number);
    return {const_iterator(this, index), true};
  }
  std::pair<const_iterator, bool> insert(const value_type& value) {
    return emplace(value.first, value.second);
  }

  /// Adds every key of `source` for which `accept(owner)` holds and that is not here yet, in order,
  /// under the number that `next_number(owner)` returns. Returns whether anything was added.
  /// The outcome is that of `emplace` per key; the cost is one merge of two sorted lists.
  template <class Accept, class NextNumber>
  bool adopt(const NumberMap& source, Accept accept, NextNumber next_number) {
    if (source.size_ == 1) {  // Fast path: one part flows into an instance that has it or none.
      Owner* owner = source.where_.owner;
      if (size_ == 1 && where_.owner == owner) return false;
      if (!accept(owner)) return false;
      if (size_ == 0) {
        where_.owner = owner;
        number_ = next_number(owner);
        size_ = 1;
        return true;
      }
    }
    if (&source == this) return false;
    return merge(source, accept, next_number);
  }

 private:
  struct Slot {
    Owner* owner;
    std::uint32_t number;
    std::uint32_t position;  // Copy of owner->list_position: comparisons stay inside the block.
  };
  static constexpr std::uint32_t NONE = UINT32_MAX;

  value_type entry(std::uint32_t index) const {
    if (size_ == 1) return {where_.owner, number_};
    return {where_.block[index].owner, where_.block[index].number};
  }

  static bool before(std::uint32_t position, const Owner* owner, std::uint32_t other_position,
                     const Owner* other) {
    if (position != other_position) return position < other_position;
    return std::less<const Owner*>()(owner, other);
  }

  /// Index of the first entry that is not before `owner`, at or after `from`.
  std::uint32_t lower_bound(const Owner* owner, std::uint32_t from = 0) const {
    if (size_ == 0) return 0;
    const std::uint32_t position = owner->list_position;
    if (size_ == 1) {
      return before(where_.owner->list_position, where_.owner, position, owner) ? 1 : 0;
    }
    const Slot* first = where_.block + from;
    const Slot* last = where_.block + size_;
    const Slot* found = std::lower_bound(first, last, owner, [&](const Slot& slot, const Owner*) {
      return before(slot.position, slot.owner, position, owner);
    });
    return static_cast<std::uint32_t>(found - where_.block);
  }

  std::uint32_t number_in_block(Owner* owner) const {
    // Fast path: where all parts hold the instance, an owner's index is its position.
    const std::uint32_t guess = owner->list_position;
    if (guess < size_ && where_.block[guess].owner == owner) return where_.block[guess].number;
    const std::uint32_t index = index_of(owner);
    return index == NONE ? 0 : where_.block[index].number;
  }

  std::uint32_t index_of(Owner* owner) const {
    if (size_ == 0) return NONE;
    if (size_ == 1) return where_.owner == owner ? 0 : NONE;
    const std::uint32_t index = lower_bound(owner);
    return index < size_ && where_.block[index].owner == owner ? index : NONE;
  }

  /// Capacity of the block that holds `size` entries: the next power of two, at least two.
  static std::uint32_t capacity_for(std::uint32_t size) {
    std::uint32_t capacity = 2;
    while (capacity < size) capacity *= 2;
    return capacity;
  }

  /// Makes the map a block that has room for `size` entries; the entries stay as they are.
  void reserve_block(std::uint32_t size) {
    const std::uint32_t capacity = capacity_for(size);
    if (size_ > 1 && capacity == capacity_for(size_)) return;
    Slot* block = new Slot[capacity];
    if (size_ == 1) {
      block[0] = {where_.owner, number_, where_.owner->list_position};
    } else if (size_ > 1) {
      std::copy(where_.block, where_.block + size_, block);
      delete[] where_.block;
    }
    where_.block = block;
  }

  /// Makes room for one entry at `index` and counts it.
  void open_gap(std::uint32_t index) {
    if (size_ != 0) {
      reserve_block(size_ + 1);
      std::copy_backward(where_.block + index, where_.block + size_, where_.block + size_ + 1);
    }
    ++size_;
  }

  void put(std::uint32_t index, Owner* owner, std::uint32_t number) {
    if (size_ == 1) {
      where_.owner = owner;
      number_ = number;
    } else {
      where_.block[index] = {owner, number, owner->list_position};
    }
  }

  template <class Accept, class NextNumber>
  bool merge(const NumberMap& source, Accept accept, NextNumber next_number) {
    // First pass: which keys are missing? A few keys are looked up, many are walked alongside.
    const bool walk = source.size_ > size_ / 8;
    std::uint32_t missing = 0;
    Owner* last_missing = nullptr;
    std::uint32_t at = 0;
    const auto is_missing = [&](Owner* owner) {
      if (walk && size_ > 1) {
        const std::uint32_t position = owner->list_position;
        while (at < size_ &&
               before(where_.block[at].position, where_.block[at].owner, position, owner)) {
          ++at;
        }
      } else {
        at = lower_bound(owner, size_ > 1 ? at : 0);
      }
      return !(at < size_ && entry(at).first == owner);
    };
    for (std::uint32_t i = 0; i < source.size_; ++i) {
      Owner* owner = source.entry(i).first;
      if (accept(owner) && is_missing(owner)) {
        ++missing;
        last_missing = owner;
      }
    }
    if (missing == 0) return false;
    if (missing == 1) {
      emplace(last_missing, next_number(last_missing));
      return true;
    }

    // Second pass: both lists into a new block; numbers are drawn in key order.
    Slot* block = new Slot[capacity_for(size_ + missing)];
    Slot* out = block;
    std::uint32_t mine = 0;
    for (std::uint32_t i = 0; i < source.size_; ++i) {
      Owner* owner = source.entry(i).first;
      if (!accept(owner)) continue;
      const std::uint32_t position = owner->list_position;
      for (; mine < size_; ++mine) {
        const Slot slot = slot_at(mine);
        if (!before(slot.position, slot.owner, position, owner)) break;
        *out++ = slot;
      }
      if (mine < size_ && slot_at(mine).owner == owner) continue;
      *out++ = {owner, next_number(owner), position};
    }
    for (; mine < size_; ++mine) *out++ = slot_at(mine);
    if (size_ > 1) delete[] where_.block;
    where_.block = block;
    size_ += missing;
    return true;
  }

  Slot slot_at(std::uint32_t index) const {
    if (size_ == 1) return {where_.owner, number_, where_.owner->list_position};
    return where_.block[index];
  }

  union Where {
    Owner* owner;  // size 1
    Slot* block;   // size above 1
  } where_ = {nullptr};
  std::uint32_t size_ = 0;
  std::uint32_t number_ = 0;  // size 1: the one entry's number
};

}  // namespace Kessel
