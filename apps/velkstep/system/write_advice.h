// What can be done about a file that cannot be written.
#pragma once

#include <string>
#include <system_error>

namespace Velkstep {

/// Why something cannot be written, and what can be done: "No space left on device; ...".
std::string reason_with_advice(std::error_code reason);

}  // namespace Velkstep
