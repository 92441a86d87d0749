// The entry point of hosts.
#include "kessel/overview.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

#include "check/record_checks.h"
#include "findings/finding_list.h"
#include "findings/named_errors.h"
#include "inspection/assembly.h"
#include "inspection/drawn_file.h"
#include "inspection/inspected_file.h"
#include "inspection/summary.h"
#include "instances/places.h"
#include "kessel/check.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

/// What there is to say of a file that was read by itself, with the warnings of its reading.
std::vector<Finding> findings_of(const InspectedFile& file, const std::filesystem::path& in,
                                 FindingList& warnings) {
  std::ifstream again(in, std::ios::in | std::ios::binary);
  check_records(again, file.instances, file.products, file.folder, warnings);
  std::vector<Finding> findings = warnings.take();
  locate(again, findings);
  return findings;
}

/// What there is to say of the input, of the files that it was read with, and of how they fit
/// together, which a check of each by itself does not show.
std::vector<Finding> findings_of_followed(const InspectedFile& file,
                                          const std::filesystem::path& in, const Options& options) {
  std::vector<Finding> findings = check(in, options);
  std::copy_if(file.doubts.begin(), file.doubts.end(), std::back_inserter(findings),
               [](const Finding& doubt) { return doubt.kind != FindingKind::text_after_end; });
  return findings;
}

/// All but the drawing. `warnings` are those of the reading.
void tell(const InspectedFile& file, const std::filesystem::path& in, FindingList& warnings,
          const Options& options, Overview& all) {
  all.summary = summary_of(file, all.drawing.assembly, in);
  all.findings = options.follow_references ? findings_of_followed(file, in, options)
                                           : findings_of(file, in, warnings);
}

Overview read_with_lines(const std::filesystem::path& in, const DrawingOptions& drawing,
                         const Options& options) {
  FindingList warnings;
  DrawnFile drawn(in, drawing, options, &warnings);
  Overview all;
  all.drawing = std::move(drawn.drawing);
  all.is_drawn = true;
  tell(drawn.file, in, warnings, options, all);
  return all;
}

Overview read_without_lines(const std::filesystem::path& in, const Options& options) {
  FindingList warnings;
  InspectedFile file;
  if (options.follow_references) {
    file = InspectedFile(in, options);
  } else {
    file.read(in, options, warnings);
  }
  Overview all;
  all.drawing.assembly = assembly_of(file, options);
  tell(file, in, warnings, options, all);
  return all;
}

Overview overview_of(const std::filesystem::path& in, const std::optional<DrawingOptions>& drawing,
                     const Options& options) {
  if (!drawing) return read_without_lines(in, options);
  try {
    return read_with_lines(in, *drawing, options);
  } catch (const InputError& error) {
    if (error.finding().kind != FindingKind::memory_limit) throw;
  }
  return read_without_lines(in, options);
}

}  // namespace

Overview read_overview(const std::filesystem::path& in,
                       const std::optional<DrawingOptions>& drawing, const Options& options) {
  Options quiet = options;
  quiet.warning = nullptr;
  return with_named_errors(in, [&] { return overview_of(in, drawing, quiet); });
}

}  // namespace Kessel
