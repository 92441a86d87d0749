// Options that several commands have.
#pragma once

#include <CLI/CLI.hpp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "kessel/options.h"
#include "run/split_arguments.h"
#include "text/progress_bar.h"
#include "text/terminal.h"

namespace Velkstep {

/// Adds IN, OUTDIR and the options that say how to split. `arguments` must outlive the parsing.
void add_split_arguments(CLI::App* command, SplitArguments& arguments);

/// Adds `--names`, for commands that name files as a split would.
CLI::Option* add_names_option(CLI::App* command, Kessel::NameStyle& names);

/// Adds `--reading`, for commands that split.
CLI::Option* add_reading_option(CLI::App* command, Kessel::Reading& reading);

/// Adds `--memory-limit`, for `Kessel::Options::memory_limit`: bytes, or a number with a unit,
/// where k is 1000 and Ki is 1024.
void add_memory_limit_option(CLI::App* command, std::uint64_t& memory_limit);

/// Adds `--follow`, for commands that look at an input, and `--follow-outside`.
void add_follow_options(CLI::App* command, bool& follow, bool& follow_outside,
                        const char* description = "Read IN and the files that it refers to as one");

/// Adds `--progress`, for commands that take long.
void add_progress_option(CLI::App* command, ShowProgress& progress);

/// Adds `--color`, for commands that print for people.
void add_colour_option(CLI::App* command, ColourChoice& colours);

/// Adds `IN...`, described by `description`, and how many are worked on at once.
void add_inputs(CLI::App* command, std::vector<std::string>& inputs, std::size_t& jobs,
                const std::string& description);

}  // namespace Velkstep
