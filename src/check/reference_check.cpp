#include "check/reference_check.h"

#include <algorithm>
#include <string>
#include <utility>

#include "check/cycles.h"
#include "instances/places.h"

namespace Kessel {

namespace {

std::string sentence_of(const Cycle& cycle, const Instances& instances) {
  const std::string first = "#" + std::to_string(instances.number(cycle.lowest));
  if (cycle.size == 1) return first + " refers to itself.";
  return first + " and " + with_commas(cycle.size - 1) +
         (cycle.size == 2 ? " other record refer" : " other records refer") +
         " to each other in a circle.";
}

}  // namespace

void check_references(std::istream& in, const Instances& instances, FindingList& findings) {
  for (Finding& finding : missing_instances(in, instances)) findings.add(std::move(finding));

  // One node more, which leads nowhere, stands for all that is missing.
  const auto nowhere = static_cast<std::uint32_t>(instances.size());
  CycleSearch search(
      nowhere + 1,
      [&](std::uint32_t record) {
        return record == nowhere ? std::span<const Reference>() : instances.references(record);
      },
      [&](Reference reference) { return std::min<std::uint32_t>(reference.record(), nowhere); });
  for (Index record = 0; record < instances.size(); ++record) search.visit(record);
  for (const Cycle& cycle : search.cycles()) {
    findings.add(warning_at(in, instances, cycle.lowest, FindingKind::reference_cycle,
                            sentence_of(cycle, instances)));
  }
}

}  // namespace Kessel
