// Texts without their comments.
#pragma once

#include <string>
#include <string_view>

namespace Kessel::Exchange {

/// `text` with a blank in place of each comment outside its strings.
std::string without_comments(std::string_view text);

}  // namespace Kessel::Exchange
