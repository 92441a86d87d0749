// Compares two files that were read.
#pragma once

#include "kessel/diff.h"
#include "sameness/compared_file.h"

namespace Kessel::Sameness {

/// What `diff` returns for two files. Their bodies are read where records were changed.
Difference compare_files(const ComparedFile& a, const BodyReader& bodies_of_a,
                         const ComparedFile& b, const BodyReader& bodies_of_b,
                         const Options& options);

}  // namespace Kessel::Sameness
