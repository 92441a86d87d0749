// Why a run refuses an input.
#pragma once

#include <filesystem>

#include "kessel/finding.h"

namespace Kessel {

/// What a person should know about that for which a reading has refused `in`: that the file is,
/// say, a compressed one, where that is why; else `refused`, with its line.
Finding explain(const Finding& refused, const std::filesystem::path& in);

}  // namespace Kessel
