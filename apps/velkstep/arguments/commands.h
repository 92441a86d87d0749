// All that the command line takes: the one place where the subcommands are listed.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace Velkstep {

/// What the chosen subcommand does once the arguments are parsed. Returns the exit code; an
/// exception that leaves it is printed as one line and means EXIT_FAILED.
using Action = std::function<int()>;

/// Describes the command line in `app`, from which help, man page and completions are made too.
/// Parsing sets `action` to what was asked for; both must outlive the parsing.
void add_commands(CLI::App& app, Action& action);

}  // namespace Velkstep
