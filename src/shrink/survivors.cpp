#include "shrink/survivors.h"

namespace Kessel::Shrink {

Survivors::Survivors(const Instances& instances, bool renumber) : instances_(instances) {
  if (renumber) numbers_ = Column<std::uint32_t>(instances.size());
  // Anchors have no number, nor have the values of a reference section.
  const auto is_named = [&](Index record) {
    const TypeId type = instances.type(record);
    return type >= TypeTable::FIRST_OF_RECORDS ||
           (type == TypeTable::REFERENCE_ENTRY && instances.number(record) != 0);
  };
  for (Index record = 0; record < instances.size(); ++record) {
    if (!stays(record)) continue;
    ++count_;
    if (renumber && is_named(record)) numbers_[record] = ++last_;
  }
}

std::uint64_t Survivors::of_missing(std::uint64_t number) {
  if (numbers_.empty() || number == 0) return number;
  return missing_.try_emplace(number, std::uint64_t{last_} + missing_.size() + 1).first->second;
}

}  // namespace Kessel::Shrink
