// What differs between two files, for people.
#pragma once

#include <string>

#include "kessel/diff.h"

namespace Velkstep {

/// Nothing for files that say the same; else the schemas where these differ, and product by product
/// what is only in A ("-"), only in B ("+") and changed ("~"), a line for each record.
std::string diff_text(const Kessel::Difference& difference);

/// One line for each product, with counts; a last one for all.
std::string diff_summary(const Kessel::Difference& difference);

}  // namespace Velkstep
