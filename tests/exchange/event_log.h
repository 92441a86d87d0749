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
                                   Exchange::Scrutiny scrutiny = Exchange::Scrutiny::full);

/// The lines for records and entries alone, once as a reading tells them and once by their layout,
/// which that reading has left. Blanks in front of them, and keywords, are in neither.
struct LaidOutLog {
  std::vector<std::string> first;
  std::vector<std::string> second;
};
LaidOutLog laid_out_log(std::string_view file, std::size_t block_size);

/// What event_log() tells, for what people read in tests: no offsets, and no text twice.
///
///     header FILE_NAME('a')
///     DATA('b')
///     #1 A(#2,'c') -> 2
///     end
///     warning empty_statement
///     error unclosed_list
std::vector<std::string> told(std::string_view file);

}  // namespace Kessel::test
