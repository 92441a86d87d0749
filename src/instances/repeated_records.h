// Records under numbers that others have had before, and lines that have been there before.
#pragma once

#include <cstdint>
#include <istream>
#include <vector>

#include "instances/instances.h"
#include "instances/number_index.h"
#include "kessel/finding.h"

namespace Kessel {

/// Reads the input once more and compares the bodies of records under one number; `repeated` is by
/// ascending `second`. Returns a warning for each second record, in their order. Throws InputError
/// where a body is another than the first one's, or where more than `memory` bytes of text would
/// have to be held.
std::vector<Finding> compare_repeated(std::istream& in, const std::vector<Repeated>& repeated,
                                      std::uint64_t memory);

/// The lines without a number in anchor and reference sections, such as "<x>=#1", of which one that
/// says the same stands in front, ascending.
std::vector<Index> repeated_lines(const Instances& instances);

}  // namespace Kessel
