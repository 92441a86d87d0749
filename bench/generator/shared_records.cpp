// Writes contexts, units, a datum, people, organisations, approvals and dates for many parts.

#include "shared_records.h"

#include <string>
#include <vector>

#include "geometric_context.h"
#include "geometry_records.h"

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

// Writes a person in an organisation with the addresses of both, assigned to `item`; returns the
// PERSON_AND_ORGANIZATION.
InstanceId write_person(StepWriter& out, const std::string& number, InstanceId item) {
  const InstanceId person =
      out.add("PERSON", "P" + number, "Mason", "Robin", Unset{}, Unset{}, Unset{});
  const InstanceId organization =
      out.add("ORGANIZATION", "O" + number, "Design office " + number, "");
  const InstanceId both = out.add("PERSON_AND_ORGANIZATION", person, organization);
  out.add("PERSONAL_ADDRESS", Unset{}, "12", "Mill Lane", Unset{}, "Newtown", Unset{}, "4711",
          Unset{}, Unset{}, Unset{}, Unset{}, Unset{}, list(person), "office");
  out.add("ORGANIZATIONAL_ADDRESS", Unset{}, "1", "Station Road", Unset{}, "Newtown", Unset{},
          "4711", Unset{}, Unset{}, Unset{}, Unset{}, Unset{}, list(organization), "main office");
  const InstanceId role = out.add("PERSON_AND_ORGANIZATION_ROLE", "design owner");
  out.add("APPLIED_PERSON_AND_ORGANIZATION_ASSIGNMENT", both, role, list(item));
  return both;
}

// Writes a date and time, assigned to `item`, and returns the DATE_AND_TIME.
InstanceId write_date(StepWriter& out, int day, InstanceId item) {
  const InstanceId date = out.add("CALENDAR_DATE", 2024, day, 5);
  const InstanceId zone = out.add("COORDINATED_UNIVERSAL_TIME_OFFSET", 1, Unset{}, Symbol{"AHEAD"});
  const InstanceId time = out.add("LOCAL_TIME", 9, 30, 0.0, zone);
  const InstanceId date_and_time = out.add("DATE_AND_TIME", date, time);
  const InstanceId role = out.add("DATE_TIME_ROLE", "creation_date");
  out.add("APPLIED_DATE_AND_TIME_ASSIGNMENT", date_and_time, role, list(item));
  return date_and_time;
}

// Writes an approval of `item` by `person` at `date_and_time`.
void write_approval(StepWriter& out, const std::string& number, InstanceId person,
                    InstanceId date_and_time, InstanceId item) {
  const InstanceId status = out.add("APPROVAL_STATUS", "approved");
  const InstanceId approval = out.add("APPROVAL", status, "step " + number);
  out.add("APPLIED_APPROVAL_ASSIGNMENT", approval, list(item));
  const InstanceId role = out.add("APPROVAL_ROLE", "approver");
  out.add("APPROVAL_PERSON_ORGANIZATION", person, approval, role);
  out.add("APPROVAL_DATE_TIME", date_and_time, approval);
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
