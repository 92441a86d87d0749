// Makes values one that say the same in different files.
#pragma once

#include "join/records.h"

namespace Kessel {

/// Unites equal values (sameness/values.h; not geometry) of different files, files of one split
/// counting as one: the first of each that says something with the first in another, the second
/// with the second. So no two values of one file become one, and a set keeps its members. Values
/// that bear identity in use (sameness/in_use.h) stay by themselves.
void unite_equal_values(const FileSet& files, Records& records);

}  // namespace Kessel
