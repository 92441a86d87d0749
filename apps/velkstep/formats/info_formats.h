// A file's header and counts as text.
#pragma once

#include <cstddef>
#include <string>

#include "kessel/summary.h"
#include "text/terminal.h"

namespace Velkstep {

/// How many types are shown, the most frequent.
inline constexpr std::size_t MOST_FREQUENT = 10;

/// Lines of a label and a value below the name of the input; what the file does not say is left
/// out.
std::string info_text(const Kessel::Summary& summary, const std::string& name,
                      const Colours& colours);

}  // namespace Velkstep
