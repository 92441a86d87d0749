// Checks the files of a finished split against the input.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "kessel/export.h"
#include "kessel/finding.h"
#include "kessel/options.h"

namespace Kessel {

/// What `verify` has looked at and what it found.
struct Verification {
  /// What is missing, doubled, changed or foreign, file by file; `Finding::file` is the file's name
  /// in the folder, "." for the folder itself, and empty for the input. Findings on a file's
  /// records have their line where that can be told. Empty where everything is as it should be.
  std::vector<Finding> findings;
  std::uint64_t files = 0;    ///< exchange files that belong to the split
  std::uint64_t records = 0;  ///< records in them
};

/// Checks that the files in the folder `outdir`, of which a split has made them, hold what the
/// exchange file `in` holds: no less, no more, and nothing else.
///
/// Joins them as `join` does and compares the result with the input as `diff` does, so that it
/// knows nothing of where a split puts things, nor of its style. What joining takes no text from is
/// looked at by itself: records that stand for others must have their form, copies of a record must
/// say the same, references must lead somewhere. The files that are referred to must be there, and
/// no others with records. The list of the split (`kessel/split_list.h`) names the root's file, or
/// else "roots.txt"; without both, the file counts to which no other refers. Files of the list that
/// are not there or have other bytes than the split wrote are found, too.
///
/// Splits of the styles lean and nested lose nothing, and nothing is found. The classic style says
/// some things more than once and others not at all, and for its splits this says what.
///
/// Of each kind the first twenty findings are listed; one more says how many there are beyond
/// (`Finding::count`). With `follow_references`, which the split must have had, too, the files that
/// `in` refers to are read with it, those outside of its folder with `follow_outside` only. Of the
/// other options the memory limit, which goes for the input, and for all files
/// together, and the progress matter: `reading` is the files, whose total grows as they are found,
/// `sorting` the comparison in steps.
///
/// Writes and prints nothing. Time and memory are about linear in the input and the files. The
/// input is read on another thread while the caller's reads the files. Throws `std::bad_alloc`,
/// what the progress throws, and, following references, `OutputError` where there is no room for a
/// temporary file.
KESSEL_EXPORT Verification verify(const std::filesystem::path& in,
                                  const std::filesystem::path& outdir, const Options& options = {});

}  // namespace Kessel
