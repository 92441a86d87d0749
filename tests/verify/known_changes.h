// What verify rightly finds in splits of sound input files.
#pragma once

#include <filesystem>

#include "kessel/finding.h"

namespace Kessel::test {

/// Whether `finding`, about a split in `outdir` of an input in which `check` finds nothing, is one
/// that such an input may bring: a record that is not written as one in the input either, or one of
/// the two types in which runs change more than the numbers, and spoil what is not made as the type
/// demands (presentations whose items are not their first list, contexts whose second attribute is
/// a list).
bool is_known_change(const Finding& finding, const std::filesystem::path& outdir);

}  // namespace Kessel::test
