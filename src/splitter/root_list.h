// The file that tells a host which of the files is the root's.
#pragma once

#include <string>

#include "model/store.h"
#include "split_list/split_root.h"

namespace Kessel {

/// Writes it into the working directory: one line with the name. False where that fails, which
/// errno tells more about.
bool write_root_list(const std::string& name);

/// Writes it where there is a root. A failure is noted and does not end the run.
void list_root(const Store& store);

}  // namespace Kessel
