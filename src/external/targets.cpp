#include "external/targets.h"

#include <algorithm>
#include <system_error>

#include "encoding/utf8_path.h"
#include "findings/finding_list.h"

namespace Kessel {

namespace fs = std::filesystem;

fs::path folder_of_references(const fs::path& in, const Options& options) {
  return options.input_folder.empty() ? in.parent_path() : options.input_folder;
}

fs::path without_links(const fs::path& given) {
  const fs::path path = given.empty() ? fs::path(".") : given;
  std::error_code error;
  fs::path plain = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? fs::absolute(path).lexically_normal() : plain;
}

bool is_below(const fs::path& path, const fs::path& folder) {
  return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
         folder.end();
}

std::vector<std::string> names_of_targets(const std::vector<ExternalReference>& references) {
  std::vector<std::string> names;
  for (const ExternalReference& reference : references) {
    for (const FileName& name : reference.names) {
      names.push_back(utf8_of_path(path_of_utf8(name.name).filename()));
    }
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

std::string missing_target_sentence(const std::string& name) {
  return "The file " + quoted_name(name) + " that is referred to is not there.";
}

Target find_target(const fs::path& folder, const ExternalReference& reference) {
  const auto path_of = [&](const FileName& one) { return folder / path_of_utf8(one.name); };
  const auto found =
      std::find_if(reference.names.begin(), reference.names.end(), [&](const FileName& one) {
        std::error_code ignored;
        return fs::is_regular_file(path_of(one), ignored);
      });
  const bool is_there = found != reference.names.end();
  const FileName& name = is_there ? *found : reference.names.front();
  return {&name, path_of(name), is_there};
}

}  // namespace Kessel
