// All that there is to tell of an exchange file, from one reading.
#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "kessel/assembly.h"
#include "kessel/drawing.h"
#include "kessel/export.h"
#include "kessel/finding.h"
#include "kessel/options.h"
#include "kessel/summary.h"

namespace Kessel {

/// What a file says about itself, what is in it, what it draws, and what is wrong with it. Owns
/// everything that it holds.
struct Overview {
  Summary summary;  ///< as read_summary() gives it
  /// As check() gives them; with Options::follow_references, behind them what shows only where all
  /// files are read as one.
  std::vector<Finding> findings;
  Drawing drawing;        ///< as read_drawing() gives it, or its `assembly` alone
  bool is_drawn = false;  ///< whether `drawing` has its parts
};

/// Reads the exchange file `in` (ISO 10303-21, clear text) once. With `drawing`, also what it
/// draws; where that does not fit into the memory limit and all else does, `in` is read once more,
/// without. Of `options`, those of read_drawing() and check() matter. With
/// Options::follow_references, all is that of the file together with those that it refers to; for
/// the findings, each of these is read by itself.
///
/// Prints nothing, writes nothing, and does not call `options.warning`. Throws as read_assembly()
/// does, and what `options.progress` throws. Works on the caller's thread.
KESSEL_EXPORT Overview read_overview(const std::filesystem::path& in,
                                     const std::optional<DrawingOptions>& drawing = {},
                                     const Options& options = {});

}  // namespace Kessel
