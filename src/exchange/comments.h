// Texts without what may stand between words and says nothing.
#pragma once

#include <string>
#include <string_view>

namespace Kessel::Exchange {

/// `text` with a blank in place of each comment, and each print control directive, outside its
/// strings.
std::string without_comments(std::string_view text);

/// Whether without_comments() would change `text`.
bool has_comments(std::string_view text);

}  // namespace Kessel::Exchange
