// Where the files are that another refers to.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "external/external_references.h"
#include "kessel/options.h"

namespace Kessel {

/// The file that a reference leads to.
struct Target {
  const FileName* name = nullptr;  ///< which name leads there; the first where none does
  std::filesystem::path path;      ///< seen from where the folder is seen from
  bool is_there = false;           ///< as a regular file
};

/// Where what is read from `in` finds other files: Options::input_folder, or the folder of `in`;
/// empty for the working directory.
std::filesystem::path folder_of_references(const std::filesystem::path& in, const Options& options);

/// Looks for the file of `reference`, which stands in a file in `folder`; empty for the working
/// directory. `reference` must outlive the result.
Target find_target(const std::filesystem::path& folder, const ExternalReference& reference);

/// What the files may be called that references lead to, without their folders, UTF-8; ascending.
std::vector<std::string> names_of_targets(const std::vector<ExternalReference>& references);

/// What is said of a file that is not there; `name` is UTF-8.
std::string missing_target_sentence(const std::string& name);

/// The absolute path without links, empty for the working directory; lexically where the system
/// cannot say.
std::filesystem::path without_links(const std::filesystem::path& path);

/// Whether `path` lies in `folder`, or in one below that; both without links.
bool is_below(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace Kessel
