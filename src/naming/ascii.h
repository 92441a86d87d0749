// Texts in other scripts, written with the characters that every system knows.
#pragma once

#include <string>
#include <string_view>

namespace Kessel {

/// `text`, in composed form, with ASCII characters only: letters without their marks, ligatures and
/// signs spelled out, marks that are left dropped, anything else as "U" and its code point in at
/// least four hexadecimal digits (U+4E2D gives "U4E2D").
std::u32string to_ascii(std::u32string_view text);

}  // namespace Kessel
