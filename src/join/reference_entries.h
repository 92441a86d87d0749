// References to other files' anchors.
#pragma once

#include "join/records.h"

namespace Kessel {

/// Makes the lines of reference sections (ISO 10303-21, 11) one with what the anchors name that
/// they refer to, where the files with those are joined. Throws InputError where a file has no such
/// anchor, or one that names no instance.
void unite_anchors(const FileSet& files, Records& records);

/// Unites the lines of reference sections of different files that name the same resource: the first
/// of each that does with the first in another, and so on.
void unite_reference_entries(const FileSet& files, Records& records);

}  // namespace Kessel
