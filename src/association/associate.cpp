// Decides which instances each part's file receives, and under which numbers.
#include "association/associate.h"

#include "association/passes.h"
#include "model/progress_reporter.h"

namespace Kessel {

void associate_entities(const Store& store, const Options& options) {
  const std::vector<Pass> passes = association_passes(options.assemblies);
  ProgressReporter reporter(options, Stage::sorting, passes.size() + 1);
  if (options.assemblies == AssemblyStyle::nested) {
    recognise_own_files(store);
  } else {
    initiate_recognition(store);
  }
  for (std::size_t i = 0; i < passes.size(); ++i) {
    run_pass(store, passes[i]);
    reporter.report(i + 1);
  }
  associate_others(store);
  reporter.report_end();
}

}  // namespace Kessel
