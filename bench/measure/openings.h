// How often a split opens its output files.
#pragma once

#include <cstdint>
#include <optional>

#include "measure/workshop.h"

namespace Kessel::bench {

/// The openings of one split.
struct Openings {
  std::uint64_t count = 0;  ///< successful openings for writing of files in the output folder
  Written written;

  /// Four openings per part and one per MiB written.
  double allowance() const {
    return 4 * static_cast<double>(written.files) +
           static_cast<double>(written.bytes) / (1024.0 * 1024.0);
  }
};

/// Splits `input` once under strace and counts. Nothing where strace is not installed.
std::optional<Openings> count_openings(const Workshop& workshop, const Programs& programs,
                                       const Input& input);

}  // namespace Kessel::bench
