// A slow, obvious check of what shrinking made of a file.
#pragma once

#include <string>
#include <vector>

#include "sameness/plain_file.h"

namespace Kessel::test {

/// What is wrong with `after`, a sentence each. Both have one data section, and records keep their
/// numbers. Right is
/// - that each record that is left says what it said, and refers to what it referred to or to a
///   record that says the same, which refers so itself;
/// - that nothing is gone or led elsewhere which has identity, by its type or by who uses it;
/// - that no list holds a record twice where it held two.
std::vector<std::string> faults_of_shrunk(const PlainFile& before, const PlainFile& after);

}  // namespace Kessel::test
