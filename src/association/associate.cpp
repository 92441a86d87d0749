// Decides which instances each part's file receives, and under which numbers.
#include "association/passes.h"
#include "kessel/file.h"
#include "model/progress_reporter.h"

namespace Kessel {

void File::associate_entities(const Options& options) const {
  const std::vector<Pass> passes = association_passes(options.assemblies);
  ProgressReporter reporter(options, Stage::sorting, passes.size() + 1);
  if (options.assemblies == AssemblyStyle::nested) {
    recognise_own_files();
  } else {
    initiate_recognition();
  }
  for (std::size_t i = 0; i < passes.size(); ++i) {
    run_pass(*this, passes[i]);
    reporter.report(i + 1);
  }
  associate_others();
  reporter.report_end();
}

}  // namespace Kessel
