// velkstep info IN...
#pragma once

#include <CLI/CLI.hpp>

#include "commands/command.h"

namespace Velkstep {

/// Adds the subcommand that prints what each of the files says about itself and holds. When it is
/// chosen, parsing sets `action`.
void add_info_command(CLI::App& app, Action& action);

}  // namespace Velkstep
