// How far a run has come, on a terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "kessel/options.h"

namespace Velkstep {

enum class ShowProgress { automatic, always, never };

/// One line on standard error that is written over and over, and wiped at the end: a bar, the
/// share that is done, what the run is busy with, and an estimate of the time that is left.
class ProgressBar {
 public:
  explicit ProgressBar(ShowProgress show);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  /// Wipes the line.
  ~ProgressBar();

  void show(const Kessel::Progress& progress);

  /// The same for several things that are called `what`, `done` of which are finished.
  void show(std::size_t done, std::size_t all, const char* what);

  /// Makes room for other lines.
  void wipe();

 private:
  using Clock = std::chrono::steady_clock;

  bool is_due();
  void show_line(const std::string& line);

  bool wanted_;
  Clock::duration patience_;  // how long a run lasts before the bar appears
  Clock::time_point begin_;
  Clock::time_point last_;
  bool shown_ = false;
};

/// The line for a run that has taken `seconds`, without what moves the cursor.
std::string progress_line(const Kessel::Progress& progress, double seconds);

}  // namespace Velkstep
