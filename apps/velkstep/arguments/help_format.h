// How --help looks.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace Velkstep {

/// Lines for a terminal of 80 columns, with arguments and options as they are typed. The usage
/// shows what must be there, and `required` behind it: what only the command itself asks for.
std::shared_ptr<CLI::FormatterBase> help_format(const std::string& required = {});

}  // namespace Velkstep
