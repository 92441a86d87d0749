// The streams of parts, for what a host need not see.
#pragma once

#include "kessel/part.h"

namespace Kessel {

/// Opens the part's stream as `Part::output` does, but prints nothing. Returns whether it is open.
bool open_stream(Part& part);

/// Closes every stream in `Part::_opened_files`, and empties it.
void close_opened_streams();

}  // namespace Kessel
