// The files that people may have meant when they named something else.
#pragma once

#include <filesystem>
#include <string>

namespace Velkstep {

/// The file beside `path`, which is not there, that may have been meant; empty for none.
std::string meant_instead_of(const std::filesystem::path& path);

/// What to do in place of naming `folder` as an input: "name files in it, such as X/*.stp".
std::string what_to_name_in(const std::filesystem::path& folder);

/// The folder of `file`, where that holds a split of which `file` is not the root; else empty.
std::string split_of(const std::filesystem::path& file);

}  // namespace Velkstep
