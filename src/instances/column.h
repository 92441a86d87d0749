// A long array that grows in place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

namespace Kessel {

/// An array of plain values that is filled from its beginning. Large ones grow without a second
/// copy beside the first wherever the system can move pages, which a vector does not.
template <class T>
class Column {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  Column() = default;
  explicit Column(std::size_t size, T value = T()) {
    reserve(size);
    for (std::size_t i = 0; i < size; ++i) values_[i] = value;
    size_ = size;
  }
  Column(Column&& other) noexcept { swap(other); }
  Column& operator=(Column&& other) noexcept {
    Column(std::move(other)).swap(*this);
    return *this;
  }
  ~Column() { std::free(values_); }

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  /// Bytes that were asked for.
  std::uint64_t bytes() const { return std::uint64_t{room_} * sizeof(T); }

  T& operator[](std::size_t i) { return values_[i]; }
  const T& operator[](std::size_t i) const { return values_[i]; }
  T& back() { return values_[size_ - 1]; }
  const T* begin() const { return values_; }
  const T* end() const { return values_ + size_; }
  T* begin() { return values_; }
  T* end() { return values_ + size_; }
  std::span<const T> part(std::size_t from, std::size_t to) const {
    return {values_ + from, to - from};
  }

  void push_back(T value) {
    if (size_ == room_) reserve(room_ + room_ / 2 + FIRST_ROOM);
    values_[size_++] = value;
  }

  /// The same where room_for() has made room for it.
  void push_into_room(T value) { values_[size_++] = value; }

  /// Takes the last value away.
  T take_back() { return values_[--size_]; }

  /// Where so many values can be put behind the others; those up to `end_at()` belong to the array
  /// then.
  T* room_for(std::size_t more) {
    if (room_ - size_ < more) reserve(room_ + room_ / 2 + more);
    return values_ + size_;
  }
  void end_at(const T* end) { size_ = static_cast<std::size_t>(end - values_); }

  /// Makes room for so many values in all.
  void reserve(std::size_t room) {
    if (room > room_) set_room(room);
  }

  /// Gives back what the array has no values for.
  void shrink_to_fit() {
    if (size_ != 0 && size_ != room_) set_room(size_);
  }

 private:
  static constexpr std::size_t FIRST_ROOM = 64;

  void set_room(std::size_t room) {
    if (room > SIZE_MAX / sizeof(T)) throw std::bad_alloc();
    void* const moved = std::realloc(static_cast<void*>(values_), room * sizeof(T));
    if (moved == nullptr) throw std::bad_alloc();
    values_ = static_cast<T*>(moved);
    room_ = room;
  }

  void swap(Column& other) noexcept {
    std::swap(values_, other.values_);
    std::swap(size_, other.size_);
    std::swap(room_, other.room_);
  }

  T* values_ = nullptr;
  std::size_t size_ = 0;
  std::size_t room_ = 0;
};

}  // namespace Kessel
