// The entry point of hosts.
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

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

std::vector<WrittenFile> split(const std::filesystem::path& in, const std::filesystem::path& outdir,
                               const Options& options) {
  if (options.shrink && options.assemblies == AssemblyStyle::classic) {
    throw std::invalid_argument(
        "The classic style of assemblies cannot be shrunk; the others can.");
  }
  if (options.assemblies == AssemblyStyle::classic) return CheckedRun(in, options).write_to(outdir);
  if (options.reading == Reading::classic) {
    throw std::invalid_argument(
        "The classic reading is for the classic style of assemblies; the others need the standard "
        "one.");
  }
  return split_by_placement(in, outdir, options);
}

}  // namespace Kessel

int TARNWELL_KBF2_INTERNAL_VelkStepSplitter() {
  return 1;
}
