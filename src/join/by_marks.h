// Makes records one that a split took from one record.
#pragma once

#include <vector>

#include "join/records.h"
#include "kessel/finding.h"

namespace Kessel {

/// Unites the records of files of one split that have the same number in its input, and sets the
/// standings of all that are marked.
void unite_by_marks(const FileSet& files, Records& records);

/// After Records::settle(): a warning for each record that says something else than the one whose
/// text is taken for both, and for each that stands for one which no file holds.
std::vector<Finding> doubts_about_marks(const FileSet& files, const Records& records);

}  // namespace Kessel
