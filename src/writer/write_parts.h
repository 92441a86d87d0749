// Writes every part's file.
#pragma once

#include <filesystem>

#include "kessel/options.h"
#include "model/store.h"

namespace Kessel {

/// Reads the input of `store`, whose records are associated with parts, once more and writes its
/// records into the parts' files under `outdir`, which is made as needed. Throws as `Run` does, in
/// a checked run as `split`. What was written until then is in the files.
void write_parts(Store& store, const std::filesystem::path& outdir,
                 const Options& options = Options::classic());

}  // namespace Kessel
