#include "output/placement_findings.h"

#include <string>

#include "findings/finding_kinds.h"
#include "instances/places.h"

namespace Kessel {

Finding finding_for(std::istream& in, const Instances& instances, const PlacementWarning& warning) {
  const std::uint64_t number = instances.number(warning.record);
  const std::string name = "#" + std::to_string(number);
  const std::uint64_t offset = read_again(in, instances, warning.record).offset;
  const auto finding_of = [&](FindingKind kind, const std::string& sentence) {
    return make_finding(kind, sentence, offset, number);
  };
  Finding finding;
  switch (warning.kind) {
    case PlacementWarning::Kind::closes_circle:
      finding = finding_of(FindingKind::usage_cycle,
                           "The component of the usage " + name +
                               " leads back to its assembly; the usage stands in the root's file.");
      break;
    case PlacementWarning::Kind::foreign_shape:
      finding = finding_of(
          FindingKind::foreign_shape,
          "The record " + name + " needs parts of other products' shapes, which stand with it.");
      break;
    case PlacementWarning::Kind::occurrence_style:
      finding = finding_of(FindingKind::occurrence_style,
                           "The style " + name +
                               " is for one of several occurrences of a part whose shape is in "
                               "another file; readers may show it on all of them or on none.");
      break;
    case PlacementWarning::Kind::shown_besides:
      finding = finding_of(FindingKind::unfollowed_file,
                           "The record " + name +
                               " shows a component that is in another file, where no usage does; "
                               "readers may not show it there.");
      break;
    case PlacementWarning::Kind::unusual_definition:
      finding = finding_of(FindingKind::unfollowed_file,
                           "The definition " + name +
                               " is of a type that many readers do not know; they may not find the "
                               "file of its part.");
      break;
  }
  finding.severity = Severity::warning;
  return finding;
}

}  // namespace Kessel
