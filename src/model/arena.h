// Memory for the records of one store: handed out front to back, given back all at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace Kessel {

/// A bump allocator. Records that stand next to each other in the input stand next to each other in
/// memory, without a header each. Destructors are the caller's to run.
class Arena {
 public:
  /// Uninitialised memory for `size` bytes, aligned to eight. Throws `std::bad_alloc`.
  void* allocate(std::size_t size) {
    size = (size + 7) & ~std::size_t{7};
    if (size > room_) add_block(size);
    std::byte* memory = next_;
    next_ += size;
    room_ -= size;
    return memory;
  }

  /// How many bytes were taken from the system.
  std::uint64_t bytes() const { return bytes_; }

  /// Constructs a `Object` in the arena's memory.
  template <class Object, class... Args>
  Object* make(Args&&... args) {
    static_assert(alignof(Object) <= 8);
    return new (allocate(sizeof(Object))) Object(std::forward<Args>(args)...);
  }

 private:
  static constexpr std::size_t BLOCK_SIZE = std::size_t{256} * 1024;

  void add_block(std::size_t at_least) {
    const std::size_t size = at_least > BLOCK_SIZE ? at_least : BLOCK_SIZE;
    blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
    next_ = blocks_.back().get();
    room_ = size;
    bytes_ += size;
  }

  std::vector<std::unique_ptr<std::byte[]>> blocks_;
  std::byte* next_ = nullptr;
  std::size_t room_ = 0;
  std::uint64_t bytes_ = 0;
};

}  // namespace Kessel
