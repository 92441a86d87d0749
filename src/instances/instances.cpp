#include "instances/instances.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Kessel {

std::uint64_t Instances::number(Index record) const {
  const std::uint32_t number = numbers_[record];
  if (number != LARGE_NUMBER) return number;
  return std::lower_bound(large_numbers_.begin(), large_numbers_.end(), record,
                          [](const LargeNumber& large, Index r) { return large.record < r; })
      ->number;
}

Exchange::Section Instances::section(Index record) const {
  // The last that begins at or in front of it; those without records are followed by another.
  return std::prev(
             std::upper_bound(sections_.begin(), sections_.end(), record,
                              [](Index r, const SectionBegin& begin) { return r < begin.first; }))
      ->section;
}

std::string_view Instances::kept_body(Index record) const {
  const auto found = std::lower_bound(kept_.begin(), kept_.end(), record);
  if (found == kept_.end() || *found != record) return {};
  return kept_bodies_[static_cast<std::size_t>(found - kept_.begin())];
}

std::vector<Index> Instances::kept_with(std::string_view keyword) const {
  std::vector<bool> has(type_table_.size());
  for (TypeId type = 0; type < type_table_.size(); ++type) {
    has[type] = type_table_.has(type, keyword);
  }
  std::vector<Index> records;
  for (const Index record : kept_) {
    if (has[types_[record]]) records.push_back(record);
  }
  return records;
}

void Instances::keep(Index record, std::string body) {
  kept_.push_back(record);
  const std::string& text = kept_texts_.emplace_back(std::move(body));
  kept_bodies_.push_back(text);
  kept_bytes_ += text.capacity() + 96;  // with its places in three lists
}

void Instances::keep_instead(Index record, std::string body) {
  const auto place = std::lower_bound(kept_.begin(), kept_.end(), record) - kept_.begin();
  kept_bodies_[static_cast<std::size_t>(place)] = kept_texts_.emplace_back(std::move(body));
  kept_bytes_ += kept_texts_.back().capacity();
}

void Instances::make_one(const Column<Index>& first) {
  for (Reference& reference : references_) {
    const Index to = reference.record();
    if (to != NO_RECORD) reference = Reference(first[to], reference.is_listed());
  }
  for (Index record = 0; record < size(); ++record) {
    if (first[record] == record) continue;
    index_.lead(number(record), first[record]);
    drop(record);
  }
}

void Instances::drop(Index record) {
  types_[record] = TypeTable::REPEATED;
  for (const Reference& reference : references(record)) {
    if (reference.record() == NO_RECORD) --missing_references_;
    references_[static_cast<std::size_t>(&reference - references_.begin())] = {};
  }
}

std::uint64_t Instances::bytes() const {
  return types_.bytes() + numbers_.bytes() + first_references_.bytes() + block_references_.bytes() +
         block_offsets_.bytes() + references_.bytes() + index_.bytes() + kept_bytes_ +
         type_table_.bytes() + large_numbers_.bytes() + sections_.bytes() + frame_bytes_;
}

}  // namespace Kessel
