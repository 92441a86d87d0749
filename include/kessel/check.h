// Checks an input file without splitting it.
#pragma once

#include <filesystem>
#include <vector>

#include "kessel/export.h"
#include "kessel/finding.h"
#include "kessel/options.h"

namespace Kessel {

/// Reads the exchange file `in` (ISO 10303-21, clear text) and returns what it finds wrong or
/// unusual, by ascending offset; findings on the whole file come first. An empty list means that
/// nothing was found.
///
/// An error is what makes it doubtful where records begin and end; there is at most one, and what
/// stands behind it is not looked at. All else is a warning.
///
/// Of each kind the first twenty findings are listed; one more, at the place of the next, says how
/// many there are beyond (`Finding::count`). Of the options the memory limit matters, the folder of
/// files that are referred to (`input_folder`), and the progress function, which is told of
/// reading.
///
/// With Options::follow_references the files that `in` refers to, and those that these refer to in
/// turn, are checked as well, one after the other, each with the same limits; for these, too,
/// `follow_outside` and `readable` matter. Their findings follow those on `in`, file by file, and
/// have `Finding::file`. Warned of are then also files outside of the folder of `in` that are not
/// followed, files of other schemas than that of `in`, and files that refer to each other in
/// circles: because of each of these, a reading of all as one is refused. That a file which is
/// referred to holds no part is nothing to warn of.
///
/// Writes and prints nothing. A file that cannot be read is a finding. Time is linear in the file,
/// memory in its records, whatever they refer to: up to three times what a run's records take,
/// which is what the limit is for. Throws `std::bad_alloc`, and what the progress function throws.
KESSEL_EXPORT std::vector<Finding> check(const std::filesystem::path& in,
                                         const Options& options = {});

}  // namespace Kessel
