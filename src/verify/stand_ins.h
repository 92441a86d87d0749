// What stands for records of other files.
#pragma once

#include "findings/finding_list.h"
#include "join/joining.h"

namespace Kessel {

/// Joining takes no text from records that stand for others, so that nobody would notice what is
/// wrong with them. Adds to `findings` those that have more or fewer parameters than the record
/// that they stand for, or an empty one where that says something.
void check_stand_ins(const Joining& joining, FindingList& findings);

}  // namespace Kessel
