// What a joined split says differently from the input, as findings.
#pragma once

#include "findings/finding_list.h"
#include "join/joining.h"
#include "kessel/diff.h"

namespace Kessel {

/// Adds a finding for each record that `difference` has, A being the input and B the joined files:
/// missing ones are about the input, the others about the file in which they stand.
void add_differences(const Difference& difference, const Joining& joining, FindingList& findings);

}  // namespace Kessel
