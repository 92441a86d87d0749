#include "output/file_numbers.h"

namespace Kessel {

FileNumbers::FileNumbers(const Instances& instances, const Placement& placement)
    : stands_(placement.stands), first_(instances.size()), last_(placement.files.size()) {
  for (Index record = 0; record < instances.size(); ++record) {
    const std::span<const Stand> stands = stands_.of(record);
    const bool has_number = instances.type(record) != TypeTable::ANCHOR_ENTRY;
    const auto number_in = [&](FileId file) { return has_number ? ++last_[file] : 0; };
    if (stands.size() == 1) {
      first_[record] = number_in(stands.front().file());
    } else {
      first_[record] = static_cast<std::uint32_t>(shared_.size());
      for (const Stand stand : stands) shared_.push_back(number_in(stand.file()));
    }
  }
}

std::uint32_t FileNumbers::of_shared(Index record, FileId file,
                                     std::span<const Stand> stands) const {
  const Stand* const stand = stands_.find(record, file);
  if (stand == nullptr) return 0;
  return shared_[first_[record] + static_cast<std::size_t>(stand - stands.data())];
}

}  // namespace Kessel
