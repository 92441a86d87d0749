// The little Unicode that exchange strings need.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Kessel {

/// U+FFFD, which stands for what cannot be shown or decoded.
inline constexpr char32_t REPLACEMENT_CHARACTER = 0xFFFD;

/// Whether the 16-bit code point `c` is a visible character: general categories L*, M*, N*, P* and
/// S* (Unicode 15). Spaces, controls, surrogates, private-use and unassigned code points are not.
bool is_graphic(char16_t c);

/// Appends the UTF-8 form of `c`, which is no surrogate and at most 0x10FFFF.
void append_utf8(std::string& out, char32_t c);

/// Takes one character off the front of `text`, which is not empty. A bad sequence yields
/// REPLACEMENT_CHARACTER and takes its maximal subpart (Unicode 15, 3.9, table 3-7); `valid` is
/// then set to false and otherwise left alone.
char32_t take_utf8(std::string_view& text, bool& valid);

/// Whether `text` is UTF-8 from end to end.
bool is_utf8(std::string_view text);

}  // namespace Kessel
