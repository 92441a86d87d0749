// Whether there is a file that can be read twice.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>

#include "kessel/finding.h"

namespace Kessel {

/// What is wrong when `in` is there but is no regular file: a folder, a pipe, a device. Opens
/// nothing, since opening a pipe may wait for ever.
std::optional<Finding> find_no_regular_file(const std::filesystem::path& in);

/// Opens `in` for reading bytes. Throws InputError, without a path, where it is not there, cannot
/// be opened, or is no regular file.
std::ifstream open_input(const std::filesystem::path& in);

/// Bytes of the file; 0 where the system cannot say.
std::uint64_t size_of_file(const std::filesystem::path& in);

}  // namespace Kessel
