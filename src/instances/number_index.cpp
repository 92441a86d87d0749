#include "instances/number_index.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace Kessel {

namespace {

bool is_dense(std::size_t records, std::uint64_t smallest, std::uint64_t largest) {
  return largest - smallest < std::uint64_t{records} * 4 + 1024;
}

}  // namespace

NumberIndex::NumberIndex(std::size_t records, std::uint64_t smallest, std::uint64_t largest)
    : smallest_(smallest) {
  if (is_dense(records, smallest, largest)) {
    dense_ = Column<Index>(static_cast<std::size_t>(largest - smallest) + 1, NO_RECORD);
  } else {
    scattered_.reserve(records);
  }
}

std::uint64_t NumberIndex::bytes_for(std::size_t records, std::uint64_t smallest,
                                     std::uint64_t largest) {
  return is_dense(records, smallest, largest) ? (largest - smallest + 1) * sizeof(Index)
                                              : std::uint64_t{records} * sizeof(Entry);
}

std::vector<Repeated> NumberIndex::finish() {
  std::sort(scattered_.begin(), scattered_.end(), [](const Entry& a, const Entry& b) {
    return std::tie(a.number, a.record) < std::tie(b.number, b.record);
  });
  // Later ones stand behind the first with their number, where lower_bound() does not look.
  for (std::size_t i = 1, first = 0; i < scattered_.size(); ++i) {
    if (scattered_[i].number != scattered_[first].number) {
      first = i;
    } else {
      repeated_.push_back({scattered_[first].record, scattered_[i].record});
    }
  }
  std::sort(repeated_.begin(), repeated_.end(),
            [](const Repeated& a, const Repeated& b) { return a.second < b.second; });
  return std::exchange(repeated_, {});
}

void NumberIndex::lead(std::uint64_t number, Index record) {
  if (dense_.size() != 0) {
    dense_[static_cast<std::size_t>(number - smallest_)] = record;
    return;
  }
  Entry* const found =
      std::lower_bound(scattered_.begin(), scattered_.end(), number,
                       [](const Entry& entry, std::uint64_t n) { return entry.number < n; });
  found->record = record;
}

Index NumberIndex::find_scattered(std::uint64_t number) const {
  const Entry* const found =
      std::lower_bound(scattered_.begin(), scattered_.end(), number,
                       [](const Entry& entry, std::uint64_t n) { return entry.number < n; });
  return found != scattered_.end() && found->number == number ? found->record : NO_RECORD;
}

}  // namespace Kessel
