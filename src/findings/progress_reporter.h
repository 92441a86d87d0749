// Tells a host how far a stage of its run has come, now and then.
#pragma once

#include <algorithm>
#include <cstdint>
#include <istream>
#include <limits>

#include "kessel/options.h"

namespace Kessel {

/// Reports one stage, from 0 to its total. Without a host that listens, it does nothing and is
/// never due. The options must outlive it.
class ProgressReporter {
 public:
  ProgressReporter(const Options& options, Stage stage, std::uint64_t total)
      : options_(options), progress_{stage, 0, total} {
    if (options_.progress) report(0);
  }

  /// Whether `done` is so far behind the last report that it is worth another one.
  bool is_due(std::uint64_t done) const { return done >= next_; }

  void report(std::uint64_t done) {
    if (!options_.progress) return;
    progress_.done = std::min(done, progress_.total);
    next_ = done + STEP;
    options_.progress(progress_);
  }

  void report_end() { report(progress_.total); }

 private:
  static constexpr std::uint64_t STEP = std::uint64_t{1} << 20;

  const Options& options_;
  Progress progress_;
  std::uint64_t next_ = std::numeric_limits<std::uint64_t>::max();
};

/// The bytes from the stream's position to its end, for a host that listens or limits memory, which
/// both are told how far the reading has come; otherwise 0.
inline std::uint64_t size_for_progress(std::istream& in, const Options& options) {
  if (!options.progress && options.memory_limit == Options::NO_LIMIT) return 0;
  const std::istream::pos_type here = in.tellg();
  in.seekg(0, std::ios::end);
  const std::istream::pos_type end = in.tellg();
  in.clear();
  in.seekg(here);
  return end < here ? 0 : static_cast<std::uint64_t>(end - here);
}

}  // namespace Kessel
