#include "external/reference_warnings.h"

#include <set>
#include <string>

#include "external/targets.h"
#include "findings/finding_list.h"
#include "instances/places.h"

namespace Kessel {

namespace {

/// What is said of what stays in a file that is there.
std::string elsewhere_sentence(const ExternalReference& reference, const Target& target) {
  return std::string(reference.is_to_anchor() ? "A record" : "A shape") + " is in the file " +
         quoted_name(target.name->name) + ", which is only referred to.";
}

}  // namespace

std::vector<Finding> reference_warnings(std::istream& in, const Instances& instances,
                                        const std::vector<ExternalReference>& references,
                                        const std::filesystem::path& folder, bool tells_elsewhere) {
  std::vector<Finding> warnings;
  std::set<std::filesystem::path> told;
  for (const ExternalReference& reference : references) {
    const Target target = find_target(folder, reference);
    if (!target.is_there) {
      warnings.push_back(warning_at(in, instances, reference.document, FindingKind::missing_target,
                                    missing_target_sentence(target.name->name)));
    } else if (tells_elsewhere && told.insert(target.path).second) {
      warnings.push_back(warning_at(in, instances, reference.document, FindingKind::shape_elsewhere,
                                    elsewhere_sentence(reference, target)));
    }
  }
  return warnings;
}

}  // namespace Kessel
