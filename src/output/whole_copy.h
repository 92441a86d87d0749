// The file of a split that has one only.
#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>

#include "kessel/options.h"
#include "output/split_writer.h"

namespace Kessel {

/// Copies the input `in`, which holds that many records, into the file `to`, byte for byte. Throws
/// OutputError when that cannot be written whole, and InputError when the input cannot be read.
FileFigures copy_whole(std::istream& in, const std::filesystem::path& to, std::uint32_t records,
                       const Options& options);

}  // namespace Kessel
