#include "text/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iostream>

namespace Velkstep {

namespace {

/// What a stage is called, and which share of a run is over when it begins: rough figures of whole
/// runs, good enough to tell how long the rest takes.
struct StageShare {
  const char* name;
  double begin;
  double end;
};

constexpr std::array<StageShare, 3> STAGES = {{
    {"reading", 0.0, 0.35},
    {"sorting", 0.35, 0.5},
    {"writing", 0.5, 1.0},
}};

constexpr int WIDTH = 30;

std::string bar_of(double share) {
  const int full = static_cast<int>(share * WIDTH);
  return "[" + std::string(static_cast<std::size_t>(full), '#') +
         std::string(static_cast<std::size_t>(WIDTH - full), ' ') + "] ";
}

double share_of(std::uint64_t done, std::uint64_t total) {
  return total == 0 ? 0.0 : static_cast<double>(done) / static_cast<double>(total);
}

}  // namespace

std::string progress_line(const Kessel::Progress& progress, double seconds) {
  const StageShare& stage = STAGES[static_cast<std::size_t>(progress.stage)];
  const double of_stage = share_of(progress.done, progress.total);
  const double share = stage.begin + of_stage * (stage.end - stage.begin);
  std::string line = bar_of(share);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%3d%% %s", static_cast<int>(share * 100), stage.name);
  line += text.data();
  if (share > 0.05) {
    const double left = seconds / share * (1 - share);
    std::snprintf(text.data(), text.size(), ", %.0f s left", std::ceil(left));
    line += text.data();
  }
  return line;
}

ProgressBar::ProgressBar(ShowProgress show)
    : wanted_(show == ShowProgress::always ||
              (show == ShowProgress::automatic && ::isatty(STDERR_FILENO) == 1)),
      patience_(std::chrono::milliseconds(show == ShowProgress::always ? 0 : 500)),
      begin_(Clock::now()),
      last_(begin_) {}

ProgressBar::~ProgressBar() {
  wipe();
}

void ProgressBar::show(const Kessel::Progress& progress) {
  if (!is_due()) return;
  const std::chrono::duration<double> seconds = last_ - begin_;
  show_line(progress_line(progress, seconds.count()));
}

void ProgressBar::show(std::size_t done, std::size_t all, const char* what) {
  if (!is_due()) return;
  show_line(bar_of(share_of(done, all)) + std::to_string(done) + " of " + std::to_string(all) +
            " " + what);
}

void ProgressBar::wipe() {
  if (shown_) std::cerr << "\r\x1b[K" << std::flush;
  shown_ = false;
}

bool ProgressBar::is_due() {
  constexpr auto PAUSE = std::chrono::milliseconds(50);
  const Clock::time_point now = Clock::now();
  if (!wanted_ || now - begin_ < patience_ || (shown_ && now - last_ < PAUSE)) return false;
  last_ = now;
  return true;
}

void ProgressBar::show_line(const std::string& line) {
  shown_ = true;
  std::cerr << '\r' << line << "\x1b[K" << std::flush;
}

}  // namespace Velkstep
