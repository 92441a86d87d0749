// Searches along references: what does a record lead to?
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "model/paged_array.h"
#include "model/slots.h"

namespace Kessel {

/// Breadth-first searches over the references of one store's records.
///
/// No record is examined twice in one search, so a search is linear and ends on cycles. A search
/// that found nothing has proved that nothing it examined leads to its type; later searches of this
/// object for that type pass those records over. Slots without a record are passed over too.
class ReachabilitySearch {
 public:
  /// Searches `slots`, which must outlive the object and keep their references.
  explicit ReachabilitySearch(Slots slots) : slots_(slots), queued_(slots.size()) {}

  /// The number of the first record of exactly `type` in breadth-first order from `start`, which is
  /// examined first; 0 when there is none. Throws `std::out_of_range` "invalid vector subscript" on
  /// coming to a number beyond the store. `type` must outlive the object.
  std::uint32_t find(std::uint32_t start, std::string_view type);

 private:
  /// So few numbers are looked through faster, and with less memory, than looked up.
  static constexpr std::size_t FEW = 16;

  struct DeadEnds {
    std::string_view type;
    PagedArray<bool> numbers;
  };
  PagedArray<bool>& dead_ends_for(std::string_view type);
  bool is_queued(std::uint32_t number) const;
  void note_queued(std::uint32_t number, bool queued);
  void enqueue(std::uint32_t number, const PagedArray<bool>& dead_ends);
  void forget_examined();

  Slots slots_;
  std::vector<std::uint32_t> queue_;  // Every number of the current search, in order.
  PagedArray<bool> queued_;           // The same as a set, of more than FEW.
  std::vector<DeadEnds> dead_ends_;
};

/// Whether a record of one of `types` can be reached from each of `starts`, numbers of existing
/// records; answers in the order of `starts`, 1 for yes.
///
/// The answers and the exception are those of a `ReachabilitySearch` per start and type, in order,
/// until one succeeds. The cost is linear in what the starts lead to, however many starts share it,
/// except where that includes a number beyond the store.
std::vector<char> lead_to_any(Slots slots, const std::vector<std::uint32_t>& starts,
                              const std::vector<std::string_view>& types);

}  // namespace Kessel
