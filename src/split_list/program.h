// What writes the files.
#pragma once

namespace Kessel {

/// "velkstep" and the version.
const char* program_name();

}  // namespace Kessel
