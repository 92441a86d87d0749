// What an exchange string says.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Kessel {

/// The UTF-8 text that `body`, what stands between a string's apostrophes, is written for, as
/// ISO 10303-21, 6.4.3 has it; no value where it is not written so. Unlike `decode_step_to_utf8`
/// it drops nothing and replaces nothing.
std::optional<std::string> string_value(std::string_view body);

}  // namespace Kessel
