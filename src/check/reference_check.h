// Checks what the records refer to.
#pragma once

#include <istream>

#include "findings/finding_list.h"
#include "instances/instances.h"

namespace Kessel {

/// Adds to `findings` which records of `instances`, read from `in`, refer to instances that are not
/// there, and which refer to each other in circles.
void check_references(std::istream& in, const Instances& instances, FindingList& findings);

}  // namespace Kessel
