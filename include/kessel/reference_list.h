// The references of one record, in eight bytes.
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace Kessel {

/// A list of instance numbers in order of appearance, duplicates kept.
///
/// A list read from a file is a view of a packed block that the store owns: a count followed by the
/// numbers. As soon as someone adds to the list, or asks for it as a vector, it becomes a vector on
/// the heap that the list owns and that lives as long as the list. Not safe for concurrent use,
/// reading included.
class ReferenceList {
 public:
  ReferenceList() = default;
  /// Takes the numbers; a vector of `other` stays where it is and is empty then.
  ReferenceList(ReferenceList&& other) {
    if (other.owns_vector()) {
      own(new std::vector<std::uint32_t>(std::exchange(*other.owned(), {})));
    } else {
      bits_ = std::exchange(other.bits_, 0);
    }
  }
  ReferenceList& operator=(ReferenceList&&) = delete;
  ReferenceList(const ReferenceList&) = delete;
  ReferenceList& operator=(const ReferenceList&) = delete;
  ~ReferenceList() {
    if (owns_vector()) delete owned();
  }

  /// Views `packed`, a count followed by that many numbers, which must outlive the list. A vector
  /// that the list had goes.
  void view(const std::uint32_t* packed) {
    if (owns_vector()) delete owned();
    bits_ = reinterpret_cast<std::uintptr_t>(packed);
  }

  /// The numbers; valid until the list changes.
  std::span<const std::uint32_t> numbers() const {
    if (bits_ == 0) return {};
    if (owns_vector()) return *owned();
    return {packed() + 1, *packed()};
  }

  /// The numbers as a vector, which follows all changes and lives as long as the list.
  const std::vector<std::uint32_t>& as_vector() const { return to_vector(); }

  void append(std::uint32_t number) { to_vector().push_back(number); }

  /// Gives back spare capacity; an empty list keeps no buffer at all.
  void shrink_to_fit() {
    if (owns_vector()) owned()->shrink_to_fit();
  }

 private:
  // The low bit tells the two forms apart: both point at things aligned to four bytes or more.
  // NOLINTBEGIN(performance-no-int-to-ptr): a tagged pointer has to become one again.
  bool owns_vector() const { return (bits_ & 1) != 0; }
  std::vector<std::uint32_t>* owned() const {
    return reinterpret_cast<std::vector<std::uint32_t>*>(bits_ & ~std::uintptr_t{1});
  }
  const std::uint32_t* packed() const { return reinterpret_cast<const std::uint32_t*>(bits_); }
  // NOLINTEND(performance-no-int-to-ptr)
  void own(std::vector<std::uint32_t>* vector) const {
    bits_ = reinterpret_cast<std::uintptr_t>(vector) | 1;
  }
  std::vector<std::uint32_t>& to_vector() const {
    if (!owns_vector()) {
      const std::span<const std::uint32_t> packed = numbers();
      own(new std::vector<std::uint32_t>(packed.begin(), packed.end()));
    }
    return *owned();
  }

  mutable std::uintptr_t bits_ = 0;
};

}  // namespace Kessel
