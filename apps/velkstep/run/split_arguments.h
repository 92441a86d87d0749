// What commands that split have in common on the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <string>

#include "kessel/options.h"
#include "text/progress_bar.h"

namespace Velkstep {

struct SplitArguments {
  std::string in;  ///< "-" for standard input
  std::filesystem::path outdir;
  Kessel::Options options;
  bool force = false;
  bool quiet = false;
  ShowProgress progress = ShowProgress::automatic;
};

/// Adds IN, OUTDIR and the options that say how to split. `arguments` must outlive the parsing.
void add_split_arguments(CLI::App* command, SplitArguments& arguments);

/// Adds `--assemblies`, for commands that must know how a split was made.
void add_assemblies_option(CLI::App* command, Kessel::AssemblyStyle& assemblies);

/// Adds `--names`, for commands that name files as a split would.
void add_names_option(CLI::App* command, Kessel::NameStyle& names);

/// Adds `--memory-limit`, for `Kessel::Options::memory_limit`: bytes, or a number with a unit,
/// where k is 1000 and Ki is 1024.
void add_memory_limit_option(CLI::App* command, std::uint64_t& memory_limit);

/// The word by which the command line chooses a style.
std::string word_of(Kessel::AssemblyStyle style);
std::string word_of(Kessel::NameStyle style);

}  // namespace Velkstep
