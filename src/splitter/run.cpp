// The entry point of hosts.
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

#include "external/targets.h"
#include "findings/named_errors.h"
#include "join/followed_input.h"
#include "kessel/encoding.h"
#include "kessel/file.h"
#include "kessel/splitter.h"
#include "splitter/checked_run.h"
#include "splitter/split_by_placement.h"
#include "splitter/written_files.h"

namespace Kessel {

std::vector<std::filesystem::path> Run(const std::filesystem::path& in,
                                       const std::filesystem::path& outdir) {
  const std::unique_ptr<File> file(File::from(in, decode_step_to_utf8));
  file->extract_parts(outdir);
  Part::free_statics();
  return written_files(file->parts(), file->root_part(), outdir);
}

namespace {

/// Throws where choices make no sense together.
void require_fit(const Options& options) {
  const bool is_classic = options.assemblies == AssemblyStyle::classic;
  if (options.shrink && is_classic) {
    throw std::invalid_argument(
        "The classic style of assemblies cannot be shrunk; the others can.");
  }
  if (is_classic && (options.follow_references || options.copy_references)) {
    throw std::invalid_argument(
        "References are neither followed nor copied in the classic style of assemblies.");
  }
  if (!is_classic && options.reading == Reading::classic) {
    throw std::invalid_argument(
        "The classic reading is for the classic style of assemblies; the others need the standard "
        "one.");
  }
}

std::vector<WrittenFile> split_as_chosen(const std::filesystem::path& in,
                                         const std::filesystem::path& outdir,
                                         const Options& options) {
  if (options.assemblies == AssemblyStyle::classic) return CheckedRun(in, options).write_to(outdir);
  if (!options.follow_references) return split_by_placement(in, outdir, options);
  const FollowedInput whole(in, options);
  // Files that were read keep their names where the split goes beside them.
  const auto& to = options.output_folder.empty() ? outdir : options.output_folder;
  return split_by_placement(whole.path(), outdir, whole.options_for_path(),
                            whole.names_in(without_links(to)));
}

}  // namespace

std::vector<WrittenFile> split(const std::filesystem::path& in, const std::filesystem::path& outdir,
                               const Options& options) {
  require_fit(options);
  return with_named_errors(in, [&] { return split_as_chosen(in, outdir, options); });
}

}  // namespace Kessel

int TARNWELL_KBF2_INTERNAL_VelkStepSplitter() {
  return 1;
}
