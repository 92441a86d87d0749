// Writing to a descriptor until all is written.
#pragma once

#include <string_view>

namespace Velkstep {

/// Writes `text` to a temporary file. Calls that a signal interrupts are made again. Throws
/// `std::runtime_error` with the reason.
void write_all(int to, std::string_view text);

}  // namespace Velkstep
