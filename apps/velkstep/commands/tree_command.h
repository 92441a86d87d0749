// velkstep tree IN
#pragma once

#include <CLI/CLI.hpp>

#include "commands/command.h"

namespace Velkstep {

/// Adds the subcommand that prints the product structure of IN in one of several formats. When it
/// is chosen, parsing sets `action`.
void add_tree_command(CLI::App& app, Action& action);

}  // namespace Velkstep
