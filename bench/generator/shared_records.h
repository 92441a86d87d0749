// The records that all parts of the shape "shared" have in common.

#pragma once

#include "product_structure.h"
#include "step_writer.h"

namespace Kessel::bench {

// How many records `write_shared_records` writes.
constexpr int SHARED_RECORD_COUNT = 300;

// What a part takes from the shared records.
struct SharedRecords {
  ProductContexts contexts;
  InstanceId geometric_context;
  InstanceId datum;  // a MAPPED_ITEM of the datum placements; an item of every part's shape
};

// Writes contexts, units, datum placements, and the people, organisations, approvals and dates that
// are assigned to the datum representation. Whoever uses the datum shares them all.
SharedRecords write_shared_records(StepWriter& out);

}  // namespace Kessel::bench
