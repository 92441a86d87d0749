// Where string literals end.
#pragma once

#include <cstddef>
#include <string_view>

namespace Kessel::Exchange {

/// The position behind the string literal that begins with the apostrophe at `at` (ISO 10303-21,
/// 6.4.3); `npos` where nothing closes it.
///
/// Doubled apostrophes stand for one. The apostrophe of the directive `\S\'` is a character, too.
/// Systems that double it there as well are understood where the string would otherwise end in
/// front of something that follows no parameter.
std::size_t behind_string(std::string_view text, std::size_t at);

}  // namespace Kessel::Exchange
