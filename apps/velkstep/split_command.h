// velkstep split IN OUTDIR
#pragma once

#include <filesystem>

#include "kessel/options.h"

namespace Velkstep {

/// Splits `in` into files under `outdir` and prints their paths on standard output, the root's
/// first. Returns the exit code; when it is EXIT_FAILED, one line on standard error says why.
int split(const std::filesystem::path& in, const std::filesystem::path& outdir,
          const Kessel::Options& options);

}  // namespace Velkstep
