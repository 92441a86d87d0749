// Exchange-file strings, UTF-8 and file-system paths.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "kessel/export.h"

namespace Kessel {

/// Decodes the body of a string literal (ISO 10303-21, 6.4.3), the text between the apostrophes,
/// to UTF-8. Outer spaces go, and so do six control
/// characters wherever they stand: tab, backspace, form feed, vertical tab, carriage return, line
/// feed. Doubled apostrophes and backslashes become
/// single, `\X2\` and `\X4\` runs are read four digits at a time, `\S\` and `\P.\` produce nothing.
/// `\X\hh` yields the single byte 0xhh as it is; characters that are not graphic become U+FFFD.
/// Never fails: what is not a directive stays text.
KESSEL_EXPORT std::string decode_step_to_utf8(std::string_view in);

/// Encodes UTF-8 text as the body of a string literal. UTF-16 units above 255 go into
/// `\X2\`...`\X0\`, units from 0x100 to 0xFFF as three digits and a zero byte; units up to 255 are
/// single bytes, apostrophes and backslashes doubled. A bad sequence (each maximal subpart) counts
/// as U+FFFD.
KESSEL_EXPORT std::string encode_utf8_to_step(std::string_view utf8);

/// A path as UTF-8. Throws `std::system_error` (`std::errc::illegal_byte_sequence`) when the
/// path's bytes are not UTF-8.
KESSEL_EXPORT std::string fspath_to_utf8(const std::filesystem::path& p);

}  // namespace Kessel
