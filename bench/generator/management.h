// People, dates and approvals, as systems that manage products write them (ISO 10303-41).

#pragma once

#include <string>

#include "step_writer.h"

namespace Kessel::bench {

// Writes a person in an organisation with the addresses of both, assigned to `item`; returns the
// PERSON_AND_ORGANIZATION. `number` tells one from the other.
InstanceId write_person(StepWriter& out, const std::string& number, InstanceId item);

// Writes a date and time on a day of May, assigned to `item`, and returns the DATE_AND_TIME.
InstanceId write_date(StepWriter& out, int day, InstanceId item);

// Writes an approval of `item` by `person` at `date_and_time`.
void write_approval(StepWriter& out, const std::string& number, InstanceId person,
                    InstanceId date_and_time, InstanceId item);

}  // namespace Kessel::bench
