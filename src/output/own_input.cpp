#include "output/own_input.h"

#include "external/targets.h"

namespace Kessel {

void refuse_to_replace_targets(const std::filesystem::path& folder,
                               const std::vector<ExternalReference>& references,
                               const std::filesystem::path& out) {
  const std::filesystem::path place = without_links(out);
  for (const ExternalReference& reference : references) {
    const Target target = find_target(folder, reference);
    if (without_links(target.path) == place) {
      throw OutputError(out, std::make_error_code(std::errc::file_exists));
    }
    refuse_to_replace(target.path, out);
  }
}

}  // namespace Kessel
