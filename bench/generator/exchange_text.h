// String literals of the exchange structure (ISO 10303-21, 6.4.3).

#pragma once

#include <string>
#include <string_view>

namespace Kessel::bench {

// Appends `utf8` to `out` as the body of a string literal, without the quotes around it: quotes and
// backslashes are doubled, characters beyond printable ASCII are written with \X2\ or, above
// U+FFFF, with \X4\ directives. Bytes that are not UTF-8 are written as U+FFFD.
void append_exchange_text(std::string& out, std::string_view utf8);

}  // namespace Kessel::bench
