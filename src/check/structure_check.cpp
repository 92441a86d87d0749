#include "check/structure_check.h"

#include <algorithm>
#include <string>

#include "external/external_references.h"
#include "external/targets.h"
#include "instances/places.h"
#include "products/structure.h"

namespace Kessel {

namespace {

using enum FindingKind;

/// Usages that join no two products.
void check_usages(std::istream& in, const Instances& instances, const Products& products,
                  FindingList& findings) {
  for (const Index record : usage_records(instances)) {
    const auto found =
        std::lower_bound(products.usages.begin(), products.usages.end(), record,
                         [](const Usage& usage, Index wanted) { return usage.record < wanted; });
    if (found != products.usages.end() && found->record == record) continue;
    findings.add(warning_at(in, instances, record, unused_usage,
                            "The usage joins no two product definitions."));
  }
}

void check_circles(std::istream& in, const Instances& instances, const Products& products,
                   FindingList& findings) {
  for (const Usage& usage : products.usages) {
    if (!usage.closes_circle) continue;
    const Index assembly = products.products[usage.assembly].definition;
    findings.add(warning_at(in, instances, usage.record, usage_cycle,
                            "The component leads back to #" +
                                std::to_string(instances.number(assembly)) +
                                ", the assembly that it is used in."));
  }
}

/// References to files that are not there.
void check_targets(std::istream& in, const Instances& instances, const Products& products,
                   const std::filesystem::path& folder, FindingList& findings) {
  for (const ExternalReference& reference : find_external_references(instances, products)) {
    const Target target = find_target(folder, reference);
    if (target.is_there) continue;
    findings.add(warning_at(in, instances, reference.document, missing_target,
                            missing_target_sentence(target.name->name)));
  }
}

}  // namespace

void check_structure(std::istream& in, const Instances& instances, const Products& products,
                     const std::filesystem::path& folder, FindingList& findings) {
  if (products.products.empty()) {
    Finding finding;
    finding.kind = no_part;
    finding.severity = Severity::warning;
    finding.sentence =
        "There is nothing to split: no product definition has a shape or a component.";
    findings.add(std::move(finding));
  }
  check_usages(in, instances, products, findings);
  check_circles(in, instances, products, findings);
  check_targets(in, instances, products, folder, findings);
}

}  // namespace Kessel
