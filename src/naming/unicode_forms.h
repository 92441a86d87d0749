// What Unicode says about equal texts: normal forms and case.
#pragma once

#include <string>
#include <string_view>

namespace Kessel {

/// Whether `c` joins the character before it: its canonical combining class is not 0.
bool is_combining(char32_t c);

/// Normalization form C (Unicode 15, 3.11), in which most systems expect names.
std::u32string to_composed_form(std::u32string_view text);

/// A text that is the same for all texts that differ in case or normal form only: the full case
/// folding of the canonical decomposition, decomposed again (Unicode 15, 3.13, D145).
std::u32string to_caseless_form(std::u32string_view text);

}  // namespace Kessel
