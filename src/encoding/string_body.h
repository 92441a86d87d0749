// Conforming exchange strings.
#pragma once

#include <string>
#include <string_view>

namespace Kessel {

/// Encodes UTF-8 text as the body of a string literal as ISO 10303-21, 6.4.3 has it: apostrophes
/// and backslashes doubled, what is no printable ASCII as `\X\` up to U+00FF, else in runs of
/// `\X2\` with four digits a character and `\X4\` with eight. A bad sequence (each maximal subpart)
/// counts as U+FFFD.
std::string encode_string_body(std::string_view utf8);

}  // namespace Kessel
