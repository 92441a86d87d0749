// Makes values one that say the same in different files.
#pragma once

#include "join/records.h"

namespace Kessel {

/// Unites equal values (value_types.h) of different files, files of one split counting as one: the
/// first of each that says something with the first in another, the second with the second. So no
/// two values of one file become one, and a set keeps its members. Values that an anchor names stay
/// by themselves.
void unite_equal_values(const FileSet& files, Records& records);

}  // namespace Kessel
