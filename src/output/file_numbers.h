// The numbers that records get in the files of a split.
#pragma once

#include <cstdint>
#include <vector>

#include "instances/column.h"
#include "instances/instances.h"
#include "placement/placement.h"

namespace Kessel {

/// Numbers the records of each file from 1 in the order of the input.
class FileNumbers {
 public:
  FileNumbers(const Instances& instances, const Placement& placement);

  /// The number of `record` in `file`; 0 where it does not stand there or has none.
  std::uint32_t of(Index record, FileId file) const {
    return stands_.is_only_in(record, file) ? first_[record] : of_shared(record, file);
  }
  /// The number of a record that stands in one file, in that file.
  std::uint32_t of_single(Index record) const { return first_[record]; }

  /// Takes the next number in `file`, behind those of all records.
  std::uint32_t take(FileId file) { return ++last_[file]; }
  std::uint32_t last(FileId file) const { return last_[file]; }

 private:
  std::uint32_t of_shared(Index record, FileId file) const;

  const FileSets& stands_;
  Column<std::uint32_t> first_;   // the number, or for shared records the place of the numbers
  Column<std::uint32_t> shared_;  // the numbers of shared records, one for each file
  std::vector<std::uint32_t> last_;
};

}  // namespace Kessel
