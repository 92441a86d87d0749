// Copies of records whose new numbers are consecutive.
#pragma once

#include <cstddef>
#include <span>

#include "instances/instances.h"
#include "instances/laid_out_input.h"
#include "output/counting_number.h"
#include "output/file_numbers.h"

namespace Kessel {

/// Records that follow each other in the input and in one file, and stand in that only.
struct Run {
  Index first;
  Index end;
  std::uint32_t number;  ///< of the first in `file`
  FileId file;
};

/// Copies records of the input with the numbers of their file.
class RunCopy {
 public:
  /// What is given must outlive the object.
  RunCopy(LaidOutInput& input, const Instances& instances, const FileNumbers& numbers)
      : input_(input), instances_(instances), numbers_(numbers) {}

  /// Goes on to the input's next texts, which are those of `run`.
  void begin(const Run& run);
  bool is_done() const { return record_ == run_.end; }
  /// Bytes that the next record may need.
  std::size_t room() const { return room_; }
  /// Copies records to [out, end), as many as surely fit there and at least one. Returns the end.
  char* copy(char* out, const char* end);

  /// Passes over the texts of these records.
  void pass_over(Index first, Index end);

 private:
  void go_to(Index record);
  char* copy_record(const Run& run, CountingNumber& number, char* out);

  LaidOutInput& input_;
  const Instances& instances_;
  const FileNumbers& numbers_;
  Run run_{};
  CountingNumber number_;  // of the next record
  Index record_ = 0;       // whose text it is at
  std::span<const Reference> references_;
  std::size_t room_ = 0;
};

}  // namespace Kessel
