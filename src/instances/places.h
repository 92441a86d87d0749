// Looks again at places of an input that was read.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "instances/instances.h"
#include "kessel/finding.h"

namespace Kessel {

/// The body of a record, and where the record stands.
struct PlacedText {
  std::string body;
  std::vector<std::uint64_t> mentions;  ///< the numbers that it refers to, in order
  std::uint64_t offset = 0;
};

/// Reads a record once more from the input that `instances` was read from.
PlacedText read_again(std::istream& in, const Instances& instances, Index record);

/// A warning about a record, with its offset. Its line is not yet known.
Finding warning_at(std::istream& in, const Instances& instances, Index record, FindingKind kind,
                   std::string sentence);

/// Warnings for the first records that refer to numbers which no record has, with the numbers, and
/// one more, about the next of them, whose count is that of all others.
std::vector<Finding> missing_instances(std::istream& in, const Instances& instances);

/// Sets lines and columns of all findings whose offset is not 0. Line feeds end lines.
void locate(std::istream& in, std::vector<Finding>& findings);

}  // namespace Kessel
