// Writes down what a reading tells.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/reader.h"

namespace Kessel::test {

/// One line for each call of the listener, with all that it is given, and one for the ending.
std::vector<std::string> event_log(std::string_view file,
                                   std::size_t block_size = Exchange::StatementCutter::BLOCK_SIZE,
                                   Exchange::Scrutiny scrutiny = Exchange::Scrutiny::full,
                                   Tape* tape = nullptr);

/// The same for what people read in tests: no offsets, and no text twice.
///
///     header FILE_NAME('a')
///     DATA('b')
///     #1 A(#2,'c') -> 2
///     end
///     warning empty_statement
///     error unclosed_list
std::vector<std::string> told(std::string_view file);

}  // namespace Kessel::test
