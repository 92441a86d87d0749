// Runs the scripts that make tables of the Unicode character database.
#pragma once

#include <filesystem>
#include <string>

#include "support/shell.h"

namespace Kessel::test {

/// Where the database is installed.
inline const std::filesystem::path UNICODE_DATA = "/usr/share/unicode";

/// Why tables cannot be made here as they were made for the sources; empty when they can.
std::string why_no_tables();

/// Runs "python3 tools/SCRIPT ARGUMENTS".
ShellRun run_table_script(const std::string& script, const std::string& arguments);

}  // namespace Kessel::test
