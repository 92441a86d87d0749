// All that the command line takes: the one place where the subcommands are listed.
#pragma once

#include <CLI/CLI.hpp>

#include "commands/command.h"

namespace Velkstep {

/// Describes the command line in `app`, from which help, man page and completions are made too.
/// Parsing sets `action` to what was asked for; both must outlive the parsing.
void add_commands(CLI::App& app, Action& action);

}  // namespace Velkstep
