// The list of files that a run returns.
#pragma once

#include <filesystem>
#include <vector>

#include "kessel/splitter.h"
#include "model/store.h"

namespace Kessel {

/// The paths of the parts' files: bare names joined to `outdir`, normal form, the root's first.
std::vector<std::filesystem::path> written_files(const std::vector<Part*>& parts, const Part* root,
                                                 const std::filesystem::path& outdir);

/// The same files of a store, and what is in them.
std::vector<WrittenFile> described_files(const Store& store, const std::filesystem::path& outdir);

}  // namespace Kessel
