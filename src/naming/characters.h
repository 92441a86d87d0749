// Texts as code points, one element per character.
#pragma once

#include <string>
#include <string_view>

namespace Kessel {

/// The characters of `text`, which is UTF-8; bytes that are not UTF-8 count as ISO 8859-1, as they
/// come out of `\X\` directives and older files, or where that has no character, as U+FFFD.
std::u32string characters_of(std::string_view text);

/// The UTF-8 form of `characters`, none of which is a surrogate.
std::string to_utf8(std::u32string_view characters);

}  // namespace Kessel
