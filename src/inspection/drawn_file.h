// An exchange file that was read with what it draws.
#pragma once

#include "inspection/inspected_file.h"
#include "kessel/drawing.h"

namespace Kessel {

/// Its records, products and lines.
struct DrawnFile {
  /// Reads `in` once. Throws as read_drawing() does.
  DrawnFile(const std::filesystem::path& in, const DrawingOptions& fineness,
            const Options& options);

  InspectedFile file;
  Drawing drawing;
};

}  // namespace Kessel
