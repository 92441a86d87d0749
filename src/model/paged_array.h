// A large array of which only the pages in use take memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace Kessel {

/// An array whose elements are `T()` until they are written to. Instance numbers may be scattered
/// over the whole 32-bit range; memory goes by the pages that hold one, reading costs two loads.
template <class T>
class PagedArray {
 public:
  /// How many elements a page has.
  static constexpr std::size_t PAGE_SIZE = 4096;

  explicit PagedArray(std::size_t size = 0) { grow(size); }
  /// Leaves `other` without elements.
  PagedArray(PagedArray&& other) noexcept { *this = std::move(other); }
  PagedArray& operator=(PagedArray&& other) noexcept {
    size_ = std::exchange(other.size_, 0);
    pages_ = std::move(other.pages_);
    memory_ = std::move(other.memory_);
    return *this;
  }

  std::size_t size() const { return size_; }

  /// Makes the array `size` elements long, which is not less than it was.
  void grow(std::size_t size) {
    size_ = size;
    pages_.resize((size + PAGE_SIZE - 1) / PAGE_SIZE, nullptr);
  }

  /// Element `i`, which must be below `size()`.
  T operator[](std::size_t i) const {
    const T* page = pages_[i / PAGE_SIZE];
    return page == nullptr ? T() : page[i % PAGE_SIZE];
  }

  /// Element `i` for writing; the reference stays valid as long as the array.
  T& edit(std::size_t i) {
    T*& page = pages_[i / PAGE_SIZE];
    if (page == nullptr) {
      memory_.push_back(std::make_unique<T[]>(PAGE_SIZE));
      page = memory_.back().get();
    }
    return page[i % PAGE_SIZE];
  }

  /// How many bytes the array takes once it is long enough for element `i`, and that is in use.
  std::uint64_t bytes_with(std::size_t i) const {
    const std::size_t page = i / PAGE_SIZE;
    const bool in_use = page < pages_.size() && pages_[page] != nullptr;
    const std::size_t pages = memory_.size() + (in_use ? 0 : 1);
    // NOLINTNEXTLINE(bugprone-sizeof-expression): where T is a pointer, its size is what is meant.
    constexpr std::uint64_t PAGE_BYTES = PAGE_SIZE * sizeof(T);
    return pages * PAGE_BYTES + std::max(pages_.size(), page + 1) * sizeof(void*);
  }

  /// Calls `visit(i, element)` in ascending order for all elements on pages in use.
  template <class Visit>
  void for_each_in_use(Visit visit) const {
    for (std::size_t page = 0; page < pages_.size(); ++page) {
      if (pages_[page] == nullptr) continue;
      const std::size_t first = page * PAGE_SIZE;
      const std::size_t count = std::min(PAGE_SIZE, size_ - first);
      for (std::size_t i = 0; i < count; ++i) visit(first + i, pages_[page][i]);
    }
  }

 private:
  std::size_t size_ = 0;
  std::vector<T*> pages_;
  std::vector<std::unique_ptr<T[]>> memory_;
};

}  // namespace Kessel
