// The file that tells a host which of the files is the root's.
#pragma once

namespace Kessel {

/// Its name, in the working directory.
inline constexpr const char* ROOT_LIST = "roots.txt";

}  // namespace Kessel
