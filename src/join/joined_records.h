// The joined file as data, without writing it.
#pragma once

#include <cstdint>

#include "instances/column.h"
#include "instances/instances.h"
#include "join/joined_lists.h"
#include "join/numbering.h"

namespace Kessel {

/// Fills `instances` with what a reading of the file that write_joined() writes would, in the order
/// of the records' numbers; anchors stand behind them, and all data is one section. `texts` gets
/// what each record says by itself (sameness/fingerprints.h), of anchors and references nothing:
/// for that the files were loaded with Following::takes_texts. No file is read. Throws InputError
/// where more memory is needed than `memory_limit`.
void make_joined_records(const FileSet& files, const Records& records, const JoinedLists& lists,
                         Numbering& numbering, std::uint64_t memory_limit, Instances& instances,
                         Column<std::uint64_t>& texts);

}  // namespace Kessel
