// Pictures as Scalable Vector Graphics.
#pragma once

#include <ostream>
#include <string>

#include "picture/sketch.h"

namespace Kessel {

/// Writes `sketch` as one SVG document; `title` is UTF-8.
void write_svg(const Sketch& sketch, const std::string& title, std::ostream& out);

}  // namespace Kessel
