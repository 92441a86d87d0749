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
  /// What is missing, doubled, changed or foreign: first about the input (`Finding::file` is empty)
  /// and the folder, then file by file in the order of `File::parts`, by ascending offset. Findings
  /// on a whole file come before those on its lines. Empty where everything is as it should be.
  std::vector<Finding> findings;
  std::uint64_t files = 0;    ///< files of parts that were read
  std::uint64_t records = 0;  ///< records in them
};

/// Checks the folder `outdir` against the exchange file `in` of which a split with `options` (the
/// styles and the memory limit; the others do not matter) has made it.
///
/// The input is read as a run reads it and its records are placed by the same rules; what each file
/// then should hold is derived from the two texts, not with the writer's code. Each file must be
/// written as an exchange file is, have the input's header with its own name, end with its last
/// line, and hold each record that is placed there once, under its number, word by word, with every
/// reference leading to the same record as in the input; every reference block must name its
/// component's file, which is there. White space and comments between words do not matter.
///
/// Of each kind the first twenty findings are listed; one more says how many there are beyond
/// (`Finding::count`). An input that `split` refuses is the only finding, and so is one of which
/// there is nothing to split. Whatever the files hold, it ends: links, pipes and devices are not
/// opened, and a file that is larger than a split could make it is not read.
///
/// Writes and prints nothing. Time is about linear in the input and the files, memory that of a run
/// and of the largest file. Works on the caller's thread; must not overlap with a run in one
/// process. Throws `std::bad_alloc` only.
KESSEL_EXPORT Verification verify(const std::filesystem::path& in,
                                  const std::filesystem::path& outdir, const Options& options = {});

}  // namespace Kessel
