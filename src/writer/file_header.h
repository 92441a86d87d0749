// The header of every output file.
#pragma once

#include <string>
#include <string_view>

namespace Kessel {

/// The header text of one output file: `header` with the first string behind "FILE_NAME" replaced
/// by `file_name` (an exchange-string body) and the second by `time_stamp`. A doubled apostrophe
/// ends a string at its first. Where a string is missing, nothing is replaced; without "FILE_NAME"
/// the time stamp goes between the second and third apostrophe of the header. Outputs depend on
/// that.
std::string make_file_header(const std::string& header, std::string_view file_name,
                             std::string_view time_stamp);

}  // namespace Kessel
