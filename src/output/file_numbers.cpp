#include "output/file_numbers.h"

#include <algorithm>

namespace Kessel {

FileNumbers::FileNumbers(const Instances& instances, const Placement& placement)
    : stands_(placement.stands), first_(instances.size()), last_(placement.files.size()) {
  const auto sections = instances.sections();
  const bool has_anchors = std::any_of(sections.begin(), sections.end(), [](const auto& section) {
    return section.section == Exchange::Section::anchor;
  });
  const auto has_number = [&](Index record) {
    return !has_anchors || instances.type(record) != TypeTable::ANCHOR_ENTRY;
  };
  const Index count = instances.size();
  for (Index record = 0; record < count;) {
    const std::span<const Stand> stands = stands_.of(record);
    if (stands.size() == 1) {
      // Fast path: nearly all records stand in one file, beside others of that file.
      const FileId file = stands.front().file();
      const Index end = stands_.end_of_run(record, count);
      std::uint32_t last = last_[file];
      if (has_anchors) {
        for (; record != end; ++record) first_[record] = has_number(record) ? ++last : 0;
      } else {
        for (; record != end; ++record) first_[record] = ++last;
      }
      last_[file] = last;
    } else {
      first_[record] = static_cast<std::uint32_t>(shared_.size());
      for (const Stand stand : stands) {
        shared_.push_back(has_number(record) ? ++last_[stand.file()] : 0);
      }
      ++record;
    }
  }
}

std::uint32_t FileNumbers::of_shared(Index record, FileId file) const {
  const std::span<const Stand> stands = stands_.of(record);
  const Stand* const stand = stands_.find(record, file);
  if (stand == nullptr) return 0;
  return shared_[first_[record] + static_cast<std::size_t>(stand - stands.data())];
}

}  // namespace Kessel
