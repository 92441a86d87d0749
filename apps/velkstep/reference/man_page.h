// The manual page.
#pragma once

#include <string>
#include <vector>

#include "arguments/description.h"

namespace Velkstep {

/// `page` (roff) with "@SYNOPSIS@", "@COMMANDS@", "@EXIT_CODES@" and "@VERSION@", each on a line of
/// its own or in one, replaced by what the command line says about itself.
std::string man_page(std::string page, const std::vector<CommandDescription>& commands);

}  // namespace Velkstep
