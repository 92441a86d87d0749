// References to other files' anchors.
#pragma once

#include "join/records.h"

namespace Kessel {

/// Unites the lines of reference sections (ISO 10303-21, 11) of different files that name the same
/// resource: the first of each that does with the first in another, and so on.
void unite_reference_entries(const FileSet& files, Records& records);

}  // namespace Kessel
