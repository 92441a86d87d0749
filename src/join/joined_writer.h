// Writes the joined file, by a second reading of every file.
#pragma once

#include <functional>
#include <ostream>
#include <string>

#include "join/numbering.h"
#include "join/residue.h"

namespace Kessel {

/// What the joined file's FILE_NAME (ISO 10303-21, 8.2.2) says.
struct JoinedName {
  std::string name;        ///< UTF-8
  std::string time_stamp;  ///< empty: what the root's says
};

/// Writes to `out` the header of the root with `name` in it, the anchors and
/// references of all files, and what is written of their records. `progress` is told how many
/// bytes of all files were read. Throws InputError where a file was changed or cannot be read.
/// Looks for no errors of `out` but to stop when there is one.
void write_joined(const FileSet& files, const Records& records, const JoinedLists& lists,
                  Numbering& numbering, const JoinedName& name, std::ostream& out,
                  const std::function<void(std::uint64_t)>& progress);

}  // namespace Kessel
