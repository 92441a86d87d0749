// Finds inputs on which the library would never stop reading.
#pragma once

#include <filesystem>
#include <string>

namespace Velkstep {

/// Reads the file and returns why splitting it would not end, as a sentence in plain English, or an
/// empty string when it would. An input ends when some line closes the header with "ENDSEC;" and
/// the data ends at a ";" that completes a record or a section. Throws `std::runtime_error` when
/// the file cannot be opened or read.
std::string why_reading_would_not_end(const std::filesystem::path& in);

}  // namespace Velkstep
