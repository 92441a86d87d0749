// Whether there is a file that can be read twice.
#pragma once

#include <filesystem>
#include <optional>

#include "kessel/finding.h"

namespace Kessel {

/// What is wrong when `in` is there but is no regular file: a folder, a pipe, a device. Opens
/// nothing, since opening a pipe may wait for ever.
std::optional<Finding> find_no_regular_file(const std::filesystem::path& in);

}  // namespace Kessel
