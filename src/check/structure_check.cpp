#include "check/structure_check.h"

#include <algorithm>
#include <string>
#include <utility>

#include "external/external_references.h"
#include "external/reference_warnings.h"
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
  const auto references = find_external_references(instances, products);
  for (Finding& finding : reference_warnings(in, instances, references, folder, false)) {
    findings.add(std::move(finding));
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
