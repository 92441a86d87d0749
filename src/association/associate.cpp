// Decides which instances each part's file receives, and under which numbers.
#include "association/associate.h"

#include <cstddef>
#include <span>

#include "association/passes.h"
#include "findings/progress_reporter.h"

namespace Kessel {

void associate_entities(const Store& store, const Options& options) {
  const std::span<const Pass> passes = association_passes();
  ProgressReporter reporter(options, Stage::sorting, passes.size() + 1);
  initiate_recognition(store);
  for (std::size_t i = 0; i < passes.size(); ++i) {
    run_pass(store, passes[i]);
    reporter.report(i + 1);
  }
  associate_others(store);
  reporter.report_end();
}

}  // namespace Kessel
