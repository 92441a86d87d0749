// Writes people, dates and approvals.

#include "management.h"

namespace Kessel::bench {

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

InstanceId write_date(StepWriter& out, int day, InstanceId item) {
  const InstanceId date = out.add("CALENDAR_DATE", 2024, day, 5);
  const InstanceId zone = out.add("COORDINATED_UNIVERSAL_TIME_OFFSET", 1, Unset{}, Symbol{"AHEAD"});
  const InstanceId time = out.add("LOCAL_TIME", 9, 30, 0.0, zone);
  const InstanceId date_and_time = out.add("DATE_AND_TIME", date, time);
  const InstanceId role = out.add("DATE_TIME_ROLE", "creation_date");
  out.add("APPLIED_DATE_AND_TIME_ASSIGNMENT", date_and_time, role, list(item));
  return date_and_time;
}

void write_approval(StepWriter& out, const std::string& number, InstanceId person,
                    InstanceId date_and_time, InstanceId item) {
  const InstanceId status = out.add("APPROVAL_STATUS", "approved");
  const InstanceId approval = out.add("APPROVAL", status, "step " + number);
  out.add("APPLIED_APPROVAL_ASSIGNMENT", approval, list(item));
  const InstanceId role = out.add("APPROVAL_ROLE", "approver");
  out.add("APPROVAL_PERSON_ORGANIZATION", person, approval, role);
  out.add("APPROVAL_DATE_TIME", date_and_time, approval);
}

}  // namespace Kessel::bench
