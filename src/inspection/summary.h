// From what was read to counts and header as plain data.
#pragma once

#include <filesystem>

#include "inspection/inspected_file.h"
#include "kessel/assembly.h"
#include "kessel/summary.h"

namespace Kessel {

/// Sums up `file`, which was read from `in`; `assembly` is its own.
Summary summary_of(const InspectedFile& file, const Assembly& assembly,
                   const std::filesystem::path& in);

}  // namespace Kessel
