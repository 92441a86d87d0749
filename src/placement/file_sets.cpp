#include "placement/file_sets.h"

#include <algorithm>

namespace Kessel {

namespace {

bool is_before(Stand stand, FileId file) {
  return stand.file() < file;
}

}  // namespace

const Stand* FileSets::find(Index record, FileId file) const {
  const std::span<const Stand> stands = of(record);
  // Fast path: files are filled one after the other.
  if (!stands.empty() && stands.back().file() <= file) {
    return stands.back().file() == file ? &stands.back() : nullptr;
  }
  const auto found = std::lower_bound(stands.begin(), stands.end(), file, is_before);
  return found == stands.end() || found->file() != file ? nullptr : &*found;
}

/// For a record that stands somewhere already.
bool FileSets::add_to_list(Index record, FileId file, Role role) {
  if (has(record, file)) return false;
  Stand& first = first_[record];
  const Stand added(file, role);
  if ((first.bits_ & 3) != LIST) {
    const auto place = static_cast<std::uint32_t>(lists_.size());
    lists_.emplace_back().reserve(2);
    lists_.back().push_back(first);
    first = Stand(place << 2 | LIST);
  }
  std::vector<Stand>& list = lists_[first.bits_ >> 2];
  list.insert(std::lower_bound(list.begin(), list.end(), file, is_before), added);
  return true;
}

void FileSets::set_role(Index record, FileId file, Role role) {
  const Stand* const stand = find(record, file);
  if (stand != nullptr) *const_cast<Stand*>(stand) = Stand(file, role);
}

std::uint64_t FileSets::bytes() const {
  std::uint64_t bytes = first_.bytes();
  for (const auto& list : lists_) bytes += sizeof list + 16 + list.capacity() * sizeof(Stand);
  return bytes;
}

}  // namespace Kessel
