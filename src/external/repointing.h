// Names of files, as they are seen from another folder.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "external/text_edits.h"

namespace Kessel {

/// The path `text`, which is seen from the folder `from`, as it is seen from `to`: both absolute
/// and without links. A relative path stays one, and from one folder the path stays as it is; so
/// does an absolute one and one with a drive or a scheme. `is_uri` says that it stands in a
/// resource.
std::string repointed(std::string_view text, const std::filesystem::path& from,
                      const std::filesystem::path& to, bool is_uri = false);

/// Whether `name` leads to the file of `target`; both are seen from `folder`.
bool leads_to(const FileName& name, const std::filesystem::path& folder,
              const std::filesystem::path& target);

/// Edits after which `references` of a file that moves from the folder `from` to `to` lead to where
/// they led before: of every text that leads to the file of its reference, be that there or not.
/// Folders are as above.
std::vector<TextEdit> repoint(const std::vector<ExternalReference>& references,
                              const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace Kessel
