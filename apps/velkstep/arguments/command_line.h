// The arguments of the process. Only this folder's sources read the headers of the library that
// parses them, which take long to compile; commands see plain structs.
#pragma once

namespace Velkstep {

/// Parses the arguments of the process and does what they ask for. What is wrong with them, and
/// help that was asked for, is printed. Returns the exit code; throws as the commands do.
int run_command_line(int argc, char** argv);

}  // namespace Velkstep
