// velkstep split IN OUTDIR
#pragma once

#include <CLI/CLI.hpp>

#include "commands/command.h"

namespace Velkstep {

/// Adds the subcommand that splits IN into files under OUTDIR and prints their paths on standard
/// output, the root's first. When it is chosen, parsing sets `action`.
void add_split_command(CLI::App& app, Action& action);

}  // namespace Velkstep
