// The file that tells a host which of the files is the root's.
#pragma once

#include "model/store.h"

namespace Kessel {

/// Its name, in the working directory.
inline constexpr const char* ROOT_LIST = "roots.txt";

/// Writes it, where there is a root. A failure is noted and does not end the run.
void list_root(const Store& store);

}  // namespace Kessel
