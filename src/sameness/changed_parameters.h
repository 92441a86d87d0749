// Which parameters of two records that correspond say different things.
#pragma once

#include <string_view>
#include <vector>

#include "kessel/diff.h"
#include "sameness/correspondence.h"

namespace Kessel::Sameness {

/// Those of two bodies (Exchange::Record::body) of equal type.
std::vector<ChangedParameter> changed_parameters(std::string_view body_a, std::string_view body_b,
                                                 const RecordGraph& a, const RecordGraph& b,
                                                 const Changes& changes);

}  // namespace Kessel::Sameness
