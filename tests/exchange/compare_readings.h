// Compares the reader with the plain one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Kessel::test {

/// What the reader and the plain one tell differently of `file`, or what the reader tells otherwise
/// in blocks of `block_size` bytes or without scrutiny, or otherwise than its lexer; empty for
/// nothing.
std::string difference_of_readings(std::string_view file, std::size_t block_size);

}  // namespace Kessel::test
