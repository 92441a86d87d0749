// What exchange strings say.
#pragma once

#include <string>
#include <string_view>

namespace Kessel::Exchange {

/// The UTF-8 text that a string literal says (ISO 10303-21, 6.4.3); `literal` has its apostrophes.
///
/// Knows `\S\`, `\P.\`, `\X\`, `\X2\` and `\X4\`; print control directives and line feeds say
/// nothing. Never fails: a "\" that begins no directive stands for itself, bytes that are not UTF-8
/// for their ISO 8859-1 characters, and half of a surrogate pair for U+FFFD.
std::string string_value(std::string_view literal);

/// Whether a string among the words of `text` has a "\" that begins no directive, or none that is
/// closed, and is not doubled.
bool has_lone_backslash(std::string_view text);

/// Whether all of `text` is UTF-8 (ISO 10646, Annex D).
bool is_utf8(std::string_view text);

/// The string literal, with its apostrophes, that says the UTF-8 text `text`: characters outside of
/// ASCII in `\X2\` and `\X4\`. What is not UTF-8 is taken for ISO 8859-1.
std::string string_literal(std::string_view text);

}  // namespace Kessel::Exchange
