// What the subcommands have in common. Each lives in a file of its own and adds itself to the app.
#pragma once

#include <functional>

namespace Velkstep {

/// What the chosen subcommand does once the arguments are parsed. Returns the exit code; an
/// exception that leaves it is printed as one line and means EXIT_FAILED.
using Action = std::function<int()>;

}  // namespace Velkstep
