// An exchange file that was read with what it draws.
#pragma once

#include "inspection/inspected_file.h"
#include "join/followed_input.h"
#include "kessel/drawing.h"

namespace Kessel {

/// Its records, products and lines.
struct DrawnFile {
  /// Reads `in` once; with Options::follow_references, together with what it refers to. What the
  /// reading warns of goes into `warnings`, where there is a list, and is told to `options.warning`
  /// where there is none. Throws as read_drawing() does.
  DrawnFile(const std::filesystem::path& in, const DrawingOptions& fineness, const Options& options,
            FindingList* warnings = nullptr);

  InspectedFile file;
  Drawing drawing;

 private:
  /// `whole` is what `in` is, where that is more than a file alone; else null.
  void draw(const std::filesystem::path& in, const DrawingOptions& fineness, const Options& options,
            const FollowedInput* whole, FindingList* warnings);
};

}  // namespace Kessel
