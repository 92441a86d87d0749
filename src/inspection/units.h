// The units that geometric contexts assign.
#pragma once

#include <cstdint>
#include <vector>

#include "inspection/kept_texts.h"
#include "kessel/summary.h"

namespace Kessel {

/// Puts the length and plane angle units that the records `contexts` assign (ISO 10303-41 and -43)
/// into `summary`, the most used first. `texts` has the texts of contexts, units and measures.
void sum_up_units(const KeptTexts& texts, const std::vector<std::uint32_t>& contexts,
                  Summary& summary);

}  // namespace Kessel
