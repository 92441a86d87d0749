// The kinds of findings.
#pragma once

#include <cstdint>
#include <string>

#include "kessel/finding.h"

namespace Kessel {

/// A finding of the kind's usual severity. Its line is not yet known.
Finding make_finding(FindingKind kind, std::string sentence, std::uint64_t offset = 0,
                     std::uint64_t instance = 0);

/// The usual severity of a kind.
Severity severity_of(FindingKind kind);

}  // namespace Kessel
