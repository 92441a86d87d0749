// What is not needed once files are one.
#pragma once

#include "join/by_structure.h"
#include "join/joined_lists.h"
#include "join/records.h"

namespace Kessel {

/// Decides what is not written, after Records::settle():
/// - `documents`, what speaks of them, and collectors of nothing else;
/// - what only these, or records that stand for others, needed;
/// - what a split made, unless something written refers to it.
/// So no reference of what is written leads to what is not.
void remove_residue(const FileSet& files, const Documents& documents, const JoinedLists& lists,
                    Records& records);

}  // namespace Kessel
