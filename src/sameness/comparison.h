// Compares two files that were read.
#pragma once

#include <filesystem>

#include "kessel/diff.h"
#include "sameness/compared_file.h"

namespace Kessel::Sameness {

/// What `diff` returns for the files at `a` and `b`.
Difference compare_files(const std::filesystem::path& a, const ComparedFile& file_a,
                         const std::filesystem::path& b, const ComparedFile& file_b,
                         const Options& options);

}  // namespace Kessel::Sameness
