// The texts of the input's records, read where they stand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "model/paged_array.h"
#include "reader/record_cutter.h"

namespace Kessel {

/// Knows where each record of a file stands, and reads it again from there.
class RecordTexts {
 public:
  /// For the file `in`, which was read as far as is needed to know that it can be.
  explicit RecordTexts(const std::filesystem::path& in);

  /// Reads the file's records in their order, behind `header_lines` lines, and notes where they
  /// stand. Calls `visit(number)` for each. The numbers are below `numbers`, those of others are
  /// not noted.
  template <class Visit>
  void find_records(std::size_t header_lines, std::size_t numbers, Visit visit) {
    index_.grow(numbers);
    RecordCutter cutter(in_);
    for (; header_lines > 0; --header_lines) cutter.next_line();
    for (;;) {
      const std::string_view record = cutter.read_record();
      if (record.empty() || cutter.input_ended()) break;
      const std::uint32_t number = note(record, cutter);
      if (number != 0) visit(number);
    }
  }

  /// The record `number`, the last of that number, as the cutter gives it out: without its ";" and
  /// without those inside. Valid until the next call. Throws InputError where the file is not as it
  /// was. Quick when called by ascending place.
  std::string_view operator[](std::uint32_t number);

 private:
  struct Span {
    std::uint64_t begin;
    std::uint64_t size;
  };
  std::uint32_t note(std::string_view record, RecordCutter& cutter);
  std::string_view read(const Span& span);

  std::ifstream in_;
  PagedArray<std::uint32_t> index_;  // by instance number: index in spans_ + 1, 0 for none
  std::vector<Span> spans_;
  std::string window_;  // a piece of the file
  std::uint64_t window_begin_ = 0;
  std::string joined_;
};

}  // namespace Kessel
