// Whether two files say the same, found out in the slow, obvious way.
#pragma once

#include <string_view>

#include "sameness/plain_file.h"

namespace Kessel::test {

/// Whether there is a one-to-one map between the records of identity of two files that keeps texts
/// and references. Texts are compared as they are spelled, reals as the machine
/// reads them. Values are spelled out in their users;
/// which types are values stands in a list of its own, for the types that tests use. Bodies shared
/// by products are not looked at. For files of a few thousand records at most.
bool match(const PlainFile& a, const PlainFile& b);

}  // namespace Kessel::test
