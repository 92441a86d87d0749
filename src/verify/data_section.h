// The records in a file of a split.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "verify/file_report.h"

namespace Kessel {

/// A record of a file: where it stands, without its ";", and its number.
struct WrittenRecord {
  std::size_t begin;
  std::size_t end;
  std::uint32_t number;  ///< 0 where there is none
};

/// Cuts the data section of `text` that begins at `begin` into its records, each of which ends with
/// the next ";": no file of a split has one inside a string. The section must end with "ENDSEC;"
/// and the file with `end_line`. Adds to `report` what stands there besides and what is missing.
std::vector<WrittenRecord> cut_data(std::string_view text, std::size_t begin,
                                    std::string_view end_line, FileReport& report);

}  // namespace Kessel
