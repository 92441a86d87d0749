// velkstep check IN
#pragma once

#include <CLI/CLI.hpp>

#include "commands/command.h"

namespace Velkstep {

/// Adds the subcommand that prints what is wrong or unusual in IN on standard output, a line each,
/// or all as JSON. When it is chosen, parsing sets `action`.
void add_check_command(CLI::App& app, Action& action);

}  // namespace Velkstep
