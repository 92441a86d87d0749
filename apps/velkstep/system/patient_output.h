// Output to somebody who may take long to read it.
#pragma once

#include <string_view>

namespace Velkstep {

/// Writes `text` to the open file `descriptor`, and waits where its reader does. Throws
/// `std::system_error` when it cannot be written and, once `hold_interruptions` was called,
/// `Interrupted`: by SIGPIPE where the reader has gone, by others when the command is asked to
/// stop.
void write_patiently(int descriptor, std::string_view text);

}  // namespace Velkstep
