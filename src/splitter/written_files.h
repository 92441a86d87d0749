// The list of files that a run returns.
#pragma once

#include <filesystem>
#include <vector>

#include "kessel/file.h"
#include "kessel/splitter.h"

namespace Kessel {

/// The paths of the written files: bare names joined to `outdir`, normal form, the root's first.
std::vector<std::filesystem::path> written_files(const File& file,
                                                 const std::filesystem::path& outdir);

/// The same files, and what is in them.
std::vector<WrittenFile> described_files(const File& file, const std::filesystem::path& outdir);

}  // namespace Kessel
