// velkstep verify IN OUTDIR
#pragma once

#include <CLI/CLI.hpp>

#include "commands/command.h"

namespace Velkstep {

/// Adds the subcommand that checks the files of a split in OUTDIR against IN and prints what it
/// finds on standard output, a line each, or all as JSON. When it is chosen, parsing sets `action`.
void add_verify_command(CLI::App& app, Action& action);

}  // namespace Velkstep
