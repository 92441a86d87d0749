#include "output/placement_findings.h"

#include <string>

#include "findings/finding_kinds.h"
#include "instances/places.h"

namespace Kessel {

Finding finding_for(std::istream& in, const Instances& instances, const PlacementWarning& warning) {
  const std::uint64_t number = instances.number(warning.record);
  const std::string name = "#" + std::to_string(number);
  const std::uint64_t offset = read_again(in, instances, warning.record).offset;
  Finding finding;
  if (warning.kind == PlacementWarning::Kind::closes_circle) {
    finding = make_finding(FindingKind::usage_cycle,
                           "The component of the usage " + name +
                               " leads back to its assembly; the usage stands in the root's file.",
                           offset, number);
  } else {
    finding = make_finding(
        FindingKind::foreign_shape,
        "The record " + name + " needs parts of other products' shapes, which stand with it.",
        offset, number);
  }
  finding.severity = Severity::warning;
  return finding;
}

}  // namespace Kessel
