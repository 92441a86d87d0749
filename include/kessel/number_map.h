// The ordered map behind Entity::part_numbers: for hosts as good as a std::map, for the library
// small where an instance belongs to one part, which is nearly always, and quick to merge where it
// belongs to thousands.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <utility>

namespace Kessel {

/// An ordered map from `Owner*` to an instance number.
///
/// Keys ascend by `Owner::list_position` (ties by address), so iteration is the same on every run
/// whatever addresses the allocator gives. The map observes its owners and never deletes them; an
/// owner's `list_position` must not change while it is a key.
///
/// Whoever asks for an entry (an iterator, a reference to a number) gets those of a `std::map`,
/// which the map becomes at that moment and remains: the entry stays where it is until it is erased
/// or the map is destroyed, whatever else comes and goes. As long as nobody asks, one entry is held
/// in place, and more live in one sorted block on the heap. 16 bytes. Not safe for concurrent use,
/// reading included.
template <class Owner>
class NumberMap {
 public:
  /// The order of keys.
  struct Order {
    bool operator()(const Owner* a, const Owner* b) const {
      return before(a->list_position, a, b->list_position, b);
    }
  };
  using Map = std::map<Owner*, std::uint32_t, Order>;
  using key_type = Owner*;
  using mapped_type = std::uint32_t;
  using value_type = typename Map::value_type;
  using size_type = std::size_t;
  using difference_type = typename Map::difference_type;
  using key_compare = Order;
  using value_compare = typename Map::value_compare;
  using reference = value_type&;
  using const_reference = const value_type&;
  using pointer = value_type*;
  using const_pointer = const value_type*;
  using iterator = typename Map::iterator;
  using const_iterator = typename Map::const_iterator;
  using reverse_iterator = typename Map::reverse_iterator;
  using const_reverse_iterator = typename Map::const_reverse_iterator;

  NumberMap() = default;
  NumberMap(std::initializer_list<value_type> entries) : NumberMap() { insert(entries); }
  template <class Input>
  NumberMap(Input first, Input last) : NumberMap() {
    insert(first, last);
  }
  NumberMap(const NumberMap& other) : NumberMap() {
    for (const Entry entry : other.entries()) add(entry.owner, entry.number);
  }
  /// Leaves `other` empty; entries that were asked for stay where they are.
  NumberMap(NumberMap&& other) noexcept
      : where_(other.where_), size_(other.size_), number_(other.number_) {
    other.size_ = 0;
  }
  NumberMap& operator=(const NumberMap& other) {
    NumberMap copy(other);
    swap(copy);
    return *this;
  }
  /// Leaves `other` empty.
  NumberMap& operator=(NumberMap&& other) noexcept {
    NumberMap taken(std::move(other));
    swap(taken);
    return *this;
  }
  NumberMap& operator=(std::initializer_list<value_type> entries) {
    return *this = NumberMap(entries);
  }
  ~NumberMap() {
    if (size_ > 1) release();
  }

  // What a host does with a map. Each function is that of `std::map`.

  iterator begin() { return as_map().begin(); }
  const_iterator begin() const { return as_map().begin(); }
  iterator end() { return as_map().end(); }
  const_iterator end() const { return as_map().end(); }
  const_iterator cbegin() const { return begin(); }
  const_iterator cend() const { return end(); }
  reverse_iterator rbegin() { return as_map().rbegin(); }
  const_reverse_iterator rbegin() const { return as_map().rbegin(); }
  reverse_iterator rend() { return as_map().rend(); }
  const_reverse_iterator rend() const { return as_map().rend(); }
  const_reverse_iterator crbegin() const { return rbegin(); }
  const_reverse_iterator crend() const { return rend(); }

  bool empty() const { return size_ == 0 || (is_map() && where_.map->empty()); }
  size_type size() const { return is_map() ? where_.map->size() : size_; }
  bool contains(Owner* owner) const {
    return is_map() ? where_.map->contains(owner) : index_of(owner) != NONE;
  }
  size_type count(Owner* owner) const { return contains(owner) ? 1 : 0; }
  key_compare key_comp() const { return {}; }
  value_compare value_comp() const { return as_map().value_comp(); }

  /// The number of `owner`; throws `std::out_of_range` "invalid map<K, T> key" when it has none.
  mapped_type& at(Owner* owner) { return at_in(as_map(), owner); }
  const mapped_type& at(Owner* owner) const { return at_in(as_map(), owner); }
  mapped_type& operator[](Owner* owner) { return as_map()[owner]; }

  iterator find(Owner* owner) { return as_map().find(owner); }
  const_iterator find(Owner* owner) const { return as_map().find(owner); }
  iterator lower_bound(Owner* owner) { return as_map().lower_bound(owner); }
  const_iterator lower_bound(Owner* owner) const { return as_map().lower_bound(owner); }
  iterator upper_bound(Owner* owner) { return as_map().upper_bound(owner); }
  const_iterator upper_bound(Owner* owner) const { return as_map().upper_bound(owner); }
  std::pair<iterator, iterator> equal_range(Owner* owner) { return as_map().equal_range(owner); }
  std::pair<const_iterator, const_iterator> equal_range(Owner* owner) const {
    return as_map().equal_range(owner);
  }

  std::pair<iterator, bool> insert(const value_type& entry) { return as_map().insert(entry); }
  iterator insert(const_iterator hint, const value_type& entry) {
    return as_map().insert(hint, entry);
  }
  template <class Input>
  void insert(Input first, Input last) {
    as_map().insert(first, last);
  }
  void insert(std::initializer_list<value_type> entries) { as_map().insert(entries); }
  template <class... Args>
  std::pair<iterator, bool> emplace(Args&&... args) {
    return as_map().emplace(std::forward<Args>(args)...);
  }
  template <class... Args>
  iterator emplace_hint(const_iterator hint, Args&&... args) {
    return as_map().emplace_hint(hint, std::forward<Args>(args)...);
  }
  template <class... Args>
  std::pair<iterator, bool> try_emplace(Owner* owner, Args&&... args) {
    return as_map().try_emplace(owner, std::forward<Args>(args)...);
  }
  std::pair<iterator, bool> insert_or_assign(Owner* owner, mapped_type number) {
    return as_map().insert_or_assign(owner, number);
  }

  size_type erase(Owner* owner) { return as_map().erase(owner); }
  iterator erase(iterator at) { return as_map().erase(at); }
  iterator erase(const_iterator at) { return as_map().erase(at); }
  iterator erase(const_iterator first, const_iterator last) { return as_map().erase(first, last); }
  void clear() {
    if (is_map()) return where_.map->clear();
    release();
    size_ = 0;
  }
  void swap(NumberMap& other) noexcept {
    std::swap(where_, other.where_);
    std::swap(size_, other.size_);
    std::swap(number_, other.number_);
  }
  friend void swap(NumberMap& a, NumberMap& b) noexcept { a.swap(b); }
  friend bool operator==(const NumberMap& a, const NumberMap& b) {
    return std::equal(a.entries().begin(), a.entries().end(), b.entries().begin(),
                      b.entries().end());
  }

  // What the library does with a map: nothing here hands out a reference, so that the map stays
  // small.

  /// A copy of one entry.
  struct Entry {
    Owner* owner;
    std::uint32_t number;
    bool operator==(const Entry&) const = default;
  };

  /// Walks copies of the entries in order. Invalidated by every change of the map.
  class EntryIterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Entry;
    using difference_type = std::ptrdiff_t;
    using pointer = const Entry*;
    using reference = Entry;

    EntryIterator() = default;
    Entry operator*() const {
      if (map_->is_map()) return {in_map_->first, in_map_->second};
      return map_->entry(index_);
    }
    EntryIterator& operator++() {
      ++index_;
      if (map_->is_map()) ++in_map_;
      return *this;
    }
    EntryIterator operator++(int) {
      EntryIterator before = *this;
      ++*this;
      return before;
    }
    bool operator==(const EntryIterator& other) const { return index_ == other.index_; }

   private:
    friend class NumberMap;
    EntryIterator(const NumberMap* map, std::size_t index) : map_(map), index_(index) {
      if (map->is_map() && index == 0) in_map_ = map->where_.map->begin();
    }
    const NumberMap* map_ = nullptr;
    std::size_t index_ = 0;
    const_iterator in_map_;
  };
  struct Entries {
    EntryIterator first;
    EntryIterator last;
    EntryIterator begin() const { return first; }
    EntryIterator end() const { return last; }
  };
  Entries entries() const { return {{this, 0}, {this, size()}}; }

  /// The first entry of a map that is not empty.
  Entry front() const {
    if (size_ == 1) return {where_.owner, number_};  // Fast path: one part.
    return *entries().begin();
  }

  /// The number of `owner`, or 0 when it has none: the writer's question for every reference.
  std::uint32_t number_or_zero(Owner* owner) const {
    if (size_ == 1) return where_.owner == owner ? number_ : 0;  // Fast path: one part.
    return size_ == 0 ? 0 : number_among_many(owner);
  }

  /// Adds (owner, number) unless `owner` has an entry already. Returns whether it was added.
  bool add(Owner* owner, std::uint32_t number) {
    if (is_map()) return where_.map->try_emplace(owner, number).second;
    const std::uint32_t index = lower_index(owner);
    if (index < size_ && entry(index).owner == owner) return false;
    open_gap(index);
    put(index, owner, number);
    return true;
  }

  /// Adds every key of `source` for which `accept(owner)` holds and that is not here yet, in order,
  /// under the number that `next_number(owner)` returns. Returns whether anything was added.
  /// The outcome is that of `add` per key; the cost is one merge of two sorted lists.
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
    if (is_map() || source.is_map()) return adopt_one_by_one(source, accept, next_number);
    return merge(source, accept, next_number);
  }

 private:
  struct Slot {
    Owner* owner;
    std::uint32_t number;
    std::uint32_t position;  // Copy of owner->list_position: comparisons stay inside the block.
  };
  static constexpr std::uint32_t NONE = UINT32_MAX;
  /// In place of a size: the entries are in a std::map.
  static constexpr std::uint32_t IN_MAP = UINT32_MAX;

  bool is_map() const { return size_ == IN_MAP; }

  /// The entries as a std::map, which they become for good.
  Map& as_map() const {
    if (!is_map()) {
      auto map = std::make_unique<Map>();
      for (const Entry entry : entries()) map->try_emplace(map->end(), entry.owner, entry.number);
      release();
      where_.map = map.release();
      size_ = IN_MAP;
    }
    return *where_.map;
  }

  template <class AnyMap>
  static auto& at_in(AnyMap& map, Owner* owner) {
    const auto found = map.find(owner);
    if (found == map.end()) throw std::out_of_range("invalid map<K, T> key");
    return found->second;
  }

  /// Frees what is on the heap.
  void release() const {
    if (is_map()) {
      delete where_.map;
    } else if (size_ > 1) {
      delete[] where_.block;
    }
  }

  Entry entry(std::size_t index) const {
    if (size_ == 1) return {where_.owner, number_};
    return {where_.block[index].owner, where_.block[index].number};
  }

  static bool before(std::uint32_t position, const Owner* owner, std::uint32_t other_position,
                     const Owner* other) {
    if (position != other_position) return position < other_position;
    return std::less<const Owner*>()(owner, other);
  }

  /// Index of the first entry that is not before `owner`, at or after `from`.
  std::uint32_t lower_index(const Owner* owner, std::uint32_t from = 0) const {
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

  std::uint32_t number_in_map(Owner* owner) const {
    const auto found = where_.map->find(owner);
    return found == where_.map->end() ? 0 : found->second;
  }

  std::uint32_t number_among_many(Owner* owner) const {
    if (is_map()) return number_in_map(owner);
    // Fast path: where all parts hold the instance, an owner's index is its position.
    const std::uint32_t guess = owner->list_position;
    if (guess < size_ && where_.block[guess].owner == owner) return where_.block[guess].number;
    const std::uint32_t index = index_of(owner);
    return index == NONE ? 0 : where_.block[index].number;
  }

  std::uint32_t index_of(Owner* owner) const {
    if (size_ == 0) return NONE;
    if (size_ == 1) return where_.owner == owner ? 0 : NONE;
    const std::uint32_t index = lower_index(owner);
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
  bool adopt_one_by_one(const NumberMap& source, Accept accept, NextNumber next_number) {
    bool added = false;
    for (const Entry entry : source.entries()) {
      if (!accept(entry.owner) || contains(entry.owner)) continue;
      add(entry.owner, next_number(entry.owner));
      added = true;
    }
    return added;
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
        at = lower_index(owner, size_ > 1 ? at : 0);
      }
      return !(at < size_ && entry(at).owner == owner);
    };
    for (std::uint32_t i = 0; i < source.size_; ++i) {
      Owner* owner = source.entry(i).owner;
      if (accept(owner) && is_missing(owner)) {
        ++missing;
        last_missing = owner;
      }
    }
    if (missing == 0) return false;
    if (missing == 1) {
      add(last_missing, next_number(last_missing));
      return true;
    }

    // Second pass: both lists into a new block; numbers are drawn in key order.
    Slot* block = new Slot[capacity_for(size_ + missing)];
    Slot* out = block;
    std::uint32_t mine = 0;
    for (std::uint32_t i = 0; i < source.size_; ++i) {
      Owner* owner = source.entry(i).owner;
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
    Map* map;      // IN_MAP
  };
  // Asking for an entry changes how the entries are held, not what they are.
  mutable Where where_ = {nullptr};
  mutable std::uint32_t size_ = 0;
  std::uint32_t number_ = 0;  // size 1: the one entry's number
};

}  // namespace Kessel
