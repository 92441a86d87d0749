// Files that are written from others.
#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

#include "external/external_references.h"
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

/// The same where `out` is the place of a file that is referred to, be that there or not: it would
/// take itself for the other. `folder` is the one that the references are seen from.
void refuse_to_replace_targets(const std::filesystem::path& folder,
                               const std::vector<ExternalReference>& references,
                               const std::filesystem::path& out);

}  // namespace Kessel
