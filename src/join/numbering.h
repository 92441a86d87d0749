// The numbers of records in the joined file.
#pragma once

#include <cstdint>
#include <map>
#include <utility>

#include "instances/column.h"
#include "join/records.h"

namespace Kessel {

/// Numbers what is written from 1, file by file in the files' order.
class Numbering {
 public:
  /// After remove_residue(). All three must outlive it.
  Numbering(const FileSet& files, const Records& records);

  /// The number of what `node` has become; 0 where that is not written.
  std::uint64_t of(Node node) const { return numbers_[records_.text_of(node)]; }

  /// The number for `number` in the file, which no record of it has: one that no record of the
  /// joined file has, always the same.
  std::uint64_t of_missing(std::size_t file, std::uint64_t number) {
    const auto [place, is_new] = missing_.try_emplace({file, number}, last_ + missing_.size() + 1);
    return place->second;
  }

  /// How many records are written.
  std::uint64_t count() const { return last_; }

 private:
  const Records& records_;
  Column<std::uint32_t> numbers_;
  std::uint64_t last_ = 0;
  std::map<std::pair<std::size_t, std::uint64_t>, std::uint64_t> missing_;
};

}  // namespace Kessel
