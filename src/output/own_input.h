// Files that are written from others.
#pragma once

#include <filesystem>
#include <system_error>

#include "kessel/errors.h"

namespace Kessel {

/// No file may take the place of one that it is made from: throws OutputError where `in` and `out`
/// are one.
inline void refuse_to_replace(const std::filesystem::path& in, const std::filesystem::path& out) {
  std::error_code ignored;  // What cannot be compared is not the same.
  if (std::filesystem::equivalent(in, out, ignored)) {
    throw OutputError(out, std::make_error_code(std::errc::file_exists));
  }
}

}  // namespace Kessel
