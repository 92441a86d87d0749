// Where the files are that another refers to.
#pragma once

#include <filesystem>
#include <string>

#include "external/external_references.h"

namespace Kessel {

/// The file that a reference leads to.
struct Target {
  const FileName* name = nullptr;  ///< which name leads there; the first where none does
  std::filesystem::path path;      ///< seen from where the folder is seen from
  bool is_there = false;           ///< as a regular file
};

/// Looks for the file of `reference`, which stands in a file in `folder`; empty for the working
/// directory. `reference` must outlive the result.
Target find_target(const std::filesystem::path& folder, const ExternalReference& reference);

/// What is said of a file that is not there; `name` is UTF-8.
std::string missing_target_sentence(const std::string& name);

/// The path that UTF-8 text gives. Text that is none gives one of the same bytes.
std::filesystem::path path_of_utf8(const std::string& utf8);
/// The other way round.
std::string utf8_of_path(const std::filesystem::path& path);

/// The absolute path without links; lexically where the system cannot say.
std::filesystem::path without_links(const std::filesystem::path& path);

/// Whether `path` lies in `folder`, or in one below that; both without links.
bool is_below(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace Kessel
