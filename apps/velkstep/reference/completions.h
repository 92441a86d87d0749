// Completions for shells.
#pragma once

#include <string>
#include <vector>

#include "arguments/description.h"

namespace Velkstep {

/// Scripts by which these shells complete subcommands, options, their words, files and folders.
std::string bash_completion(const std::vector<CommandDescription>& commands);
std::string zsh_completion(const std::vector<CommandDescription>& commands);
std::string fish_completion(const std::vector<CommandDescription>& commands);

}  // namespace Velkstep
