// velkstep report IN OUTDIR
#pragma once

#include <CLI/CLI.hpp>

#include "commands/command.h"

namespace Velkstep {

/// Adds the subcommand that splits IN into files under OUTDIR, with a page about them, and prints
/// the page's path on standard output. When it is chosen, parsing sets `action`.
void add_report_command(CLI::App& app, Action& action);

}  // namespace Velkstep
