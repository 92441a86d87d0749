// Checks the lines in front of a file's data.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "verify/file_report.h"

namespace Kessel {

/// Checks whether `text` begins with the input's `first_line` and `header`, in which the file is
/// called `file_name` (UTF-8; a folder may stand in front) and has a time stamp of its own, an
/// empty line and "DATA;". Returns where the data begins; npos where no line is "DATA;".
std::size_t check_header(std::string_view text, std::string_view first_line,
                         std::string_view header, std::string_view file_name, FileReport& report);

}  // namespace Kessel
