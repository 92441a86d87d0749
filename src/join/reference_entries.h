// References to other files' anchors.
#pragma once

#include "join/records.h"

namespace Kessel {

/// Makes the lines of reference sections (ISO 10303-21, 11) one with what the anchors name that
/// they refer to, where the files with those are joined. Throws InputError where a file has no such
/// anchor, or one that names no instance.
void unite_anchors(const FileSet& files, Records& records);

/// Unites the lines of reference sections of different origins (join/origins.h) that name the same
/// resource, each seen from its own file's folder: the first of one that does with the first of
/// another, and so on. What a file names in itself is no other's.
void unite_reference_entries(const FileSet& files, Records& records);

}  // namespace Kessel
