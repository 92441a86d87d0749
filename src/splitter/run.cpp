// The entry point of hosts.
#include <filesystem>
#include <memory>
#include <vector>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "kessel/splitter.h"
#include "splitter/written_files.h"

namespace Kessel {

std::vector<std::filesystem::path> Run(const std::filesystem::path& in,
                                       const std::filesystem::path& outdir) {
  return Run(in, outdir, Options());
}

std::vector<std::filesystem::path> Run(const std::filesystem::path& in,
                                       const std::filesystem::path& outdir,
                                       const Options& options) {
  const std::unique_ptr<File> file(File::from(in, decode_step_to_utf8));
  file->extract_parts(outdir, options);
  Part::free_statics();
  return written_files(*file, outdir);
}

}  // namespace Kessel

int TARNWELL_KBF2_INTERNAL_VelkStepSplitter() {
  return 1;
}
