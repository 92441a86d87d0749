// Other ways to write the same file, and changes that make another one of it.
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "sameness/plain_file.h"

namespace Kessel::test {

using Random = std::mt19937_64;

/// The records in another order, under other numbers.
PlainFile shuffled(PlainFile file, Random& random);

/// The text with other blanks, comments between words, other spellings of reals and strings, and
/// numbers with zeros in front.
std::string respelled(const PlainFile& file, Random& random);

/// Changes one thing: a literal, a reference, an item of a list, or a keyword. What it did, for a
/// message.
std::string mutate(PlainFile& file, Random& random);

}  // namespace Kessel::test
