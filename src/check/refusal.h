// Why a run refuses an input.
#pragma once

#include <filesystem>

#include "kessel/finding.h"
#include "kessel/options.h"

namespace Kessel {

/// What `check` says about that for which the reader has refused `in`: with its line, or that the
/// file is, say, a compressed one. Reads the file once more; where it does not show what the reader
/// found, returns `refused`.
Finding explain(const Finding& refused, const std::filesystem::path& in, const Options& options);

}  // namespace Kessel
