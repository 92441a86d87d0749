// The command line as plain data, for pages and scripts that describe it.
#pragma once

#include <string>
#include <vector>

namespace Velkstep {

struct OptionDescription {
  std::vector<std::string> flags;  ///< "-h", "--help"; none for a positional argument
  std::string value;  ///< what its value is called, such as "N", "IN..." where there may be
                      ///< several; empty for a flag
  std::vector<std::string> words;  ///< what its value can be; empty for any
  std::string preset;
  std::string text;
  bool is_path = false;    ///< whether its value is a file or a folder
  bool is_folder = false;  ///< whether it is a folder
  bool repeats = false;    ///< whether there may be several values
};

struct CommandDescription {
  std::string name;
  std::string text;
  std::vector<std::string> usage;  ///< the words behind its name: "[OPTIONS]", "IN", "-o", "OUT"
  std::vector<OptionDescription> arguments;  ///< positional, in order
  std::vector<OptionDescription> options;
};

/// The program itself and, behind it, its subcommands.
std::vector<CommandDescription> describe_command_line();

}  // namespace Velkstep
