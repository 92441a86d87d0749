// Writes contexts, units, a datum, people, organisations, approvals and dates for many parts.

#include "shared_records.h"

#include <string>
#include <vector>

#include "geometric_context.h"
#include "geometry_records.h"
#include "management.h"

namespace Kessel::bench {
namespace {

// Each group of a person, an approval and a date makes 19 records; with the 34 records of contexts,
// units, datum and its owner they add up to SHARED_RECORD_COUNT.
constexpr int GROUP_COUNT = 14;
constexpr int DATUM_PLACEMENTS = 3;

// The datum representation and a mapped item that brings it into other representations.
struct Datum {
  InstanceId representation;
  InstanceId mapped_item;
};

Datum write_datum(StepWriter& out, InstanceId geometric_context) {
  std::vector<InstanceId> placements;
  for (int i = 0; i < DATUM_PLACEMENTS; ++i)
    placements.push_back(write_placement(out, shifted_to({100.0 * i, 0.0, 0.0})));
  Datum datum;
  datum.representation = out.add("SHAPE_REPRESENTATION", "datum", placements, geometric_context);
  const InstanceId map = out.add("REPRESENTATION_MAP", placements.front(), datum.representation);
  datum.mapped_item =
      out.add("MAPPED_ITEM", "datum", map, write_placement(out, shifted_to({0.0, 0.0, 0.0})));
  return datum;
}

// Writes the organisation that owns `item`.
void write_owner(StepWriter& out, InstanceId item) {
  const InstanceId organization = out.add("ORGANIZATION", "O0", "Datum office", "");
  const InstanceId role = out.add("ORGANIZATION_ROLE", "owner");
  out.add("APPLIED_ORGANIZATION_ASSIGNMENT", organization, role, list(item));
}

}  // namespace

SharedRecords write_shared_records(StepWriter& out) {
  SharedRecords shared;
  shared.contexts = write_product_contexts(out);
  shared.geometric_context = write_geometric_context(out, write_units(out, AngleUnit::degree));
  const Datum datum = write_datum(out, shared.geometric_context);
  shared.datum = datum.mapped_item;
  write_owner(out, datum.representation);
  for (int i = 1; i <= GROUP_COUNT; ++i) {
    const std::string number = std::to_string(i);
    const InstanceId person = write_person(out, number, datum.representation);
    const InstanceId date_and_time = write_date(out, i, datum.representation);
    write_approval(out, number, person, date_and_time, datum.representation);
  }
  return shared;
}

}  // namespace Kessel::bench
