// What a file is, by its first bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "kessel/finding.h"

namespace Kessel {

/// How many bytes recognise() wants to see, if there are as many.
inline constexpr std::size_t HEAD_SIZE = 4096;

/// What is wrong when a file that begins with `head` cannot be an exchange file: it is compressed,
/// in an encoding of more than one byte, binary, or some other text.
std::optional<Finding> recognise(std::string_view head);

/// UTF-8's byte order mark.
inline constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

}  // namespace Kessel
