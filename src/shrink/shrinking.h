// The steps of shrinking.
#pragma once

#include <filesystem>
#include <ostream>

#include "kessel/shrink.h"

namespace Kessel::Shrink {

/// Shrinks `in` as `shrink` does, but into a stream: looks for no errors of `out` but to stop when
/// there is one, and leaves Shrunk::bytes_after to the caller.
Shrunk shrink_into(const std::filesystem::path& in, std::ostream& out,
                   const ShrinkOptions& options);

}  // namespace Kessel::Shrink
