// Splits a file, looks at what came out, and puts it together again.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "kessel/options.h"

namespace Kessel::test {

/// What is wrong with the split of the exchange file `in` in the style `assemblies`, lean or
/// nested, a sentence each; empty where nothing is:
/// - the placement keeps its invariants (check_placement), and where the input `is_sound`, what
///   speaks of a product stands with it (check_remarks);
/// - every file that is written is an exchange file of which nothing is unusual but the input was,
///   and no reference in it leads nowhere unless the input has such references;
/// - joined again, the files say what the input says (diff), and verify finds nothing;
/// - splitting again gives the same bytes, time stamps apart.
/// Works in the folders "split", "again" and the file "joined.stp" of the working directory, which
/// it empties first. Throws as split() does for what cannot be read; everything later is a fault.
std::vector<std::string> round_trip_faults(const std::filesystem::path& in,
                                           AssemblyStyle assemblies, bool is_sound);

}  // namespace Kessel::test
