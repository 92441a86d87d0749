// Checks one file of a split.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "verify/data_section.h"
#include "verify/expected_record.h"
#include "verify/file_report.h"
#include "verify/folder.h"
#include "verify/placed_input.h"
#include "verify/tokens.h"

namespace Kessel {

/// The file of one part, and what should stand in it.
class FileCheck {
 public:
  /// For a file that holds `text`. All arguments must outlive the object.
  FileCheck(PlacedInput& input, const OutputFolder& folder, Part& part, std::string_view text,
            FindingList& findings);

  /// Adds all that is wrong with the file to the findings. Returns how many records it holds.
  std::size_t check();

 private:
  void count_numbers(const std::vector<WrittenRecord>& records);
  void find_missing();
  void check_record(const WrittenRecord& record);
  void compare_with_input(const WrittenRecord& record, std::uint32_t id);
  void compare_with_block(const WrittenRecord& record);
  void check_references(const WrittenRecord& record);
  void report_difference(const WrittenRecord& record, std::uint32_t id,
                         const std::vector<Token>& expected);
  bool is_defined(std::uint32_t number) const;

  PlacedInput& input_;
  const OutputFolder& folder_;
  Part& part_;
  std::string_view text_;
  FileReport report_;
  ExpectedRecord expected_;
  std::span<const std::uint32_t> placed_;
  std::span<const PlacedBlock> blocks_;

  std::vector<std::uint8_t>
      times_;               // by number, up to the last that belongs there: 0, 1, 2 or more
  std::vector<bool> seen_;  // the same, while the records are gone through
  std::unordered_set<std::uint32_t> foreign_;  // numbers beyond
  std::vector<Token> words_;                   // of the record that is looked at
  std::vector<Token> input_words_;
};

}  // namespace Kessel
