// Makes sure that a run writes over nothing.
#pragma once

#include <filesystem>

#include "model/store.h"

namespace Kessel {

/// Throws `OutputError` where something is there already, in whatever form, under the name of a
/// file that `file`, read from `in`, is about to be written to under `outdir`, and where
/// "roots.txt" in the working directory is not to be overwritten: it is there and no regular file,
/// or it is the input. The reason is `std::errc::is_a_directory` for a folder and
/// `std::errc::file_exists` for all else, links included, which are not followed; or what the
/// system says where it cannot look. Parts without a name are passed over.
void require_fresh_files(const Store& file, const std::filesystem::path& in,
                         const std::filesystem::path& outdir);

/// The same for one file that is about to be written, and for "roots.txt" of a split of `in`.
void require_fresh_file(const std::filesystem::path& path);
void require_fresh_root_list(const std::filesystem::path& in);

}  // namespace Kessel
