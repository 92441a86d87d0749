// The entry point of hosts.
#include <filesystem>
#include <memory>
#include <vector>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "kessel/splitter.h"

namespace Kessel {

namespace {

/// The paths of the written files: bare names joined to `outdir`, normal form, the root's first.
std::vector<std::filesystem::path> written_files(const File& file,
                                                 const std::filesystem::path& outdir) {
  std::vector<std::filesystem::path> written;
  for (const Part* part : file.parts()) {
    if (part == nullptr) continue;
    std::filesystem::path path = part->path;
    if (path.empty() && file.parts().size() == 1) continue;  // The only part has no file.
    if (!path.has_parent_path()) path = outdir / path;
    path = path.lexically_normal();
    written.insert(part == file.root_part() ? written.begin() : written.end(), std::move(path));
  }
  return written;
}

}  // namespace

std::vector<std::filesystem::path> Run(const std::filesystem::path& in,
                                       const std::filesystem::path& outdir) {
  const std::unique_ptr<File> file(File::from(in, decode_step_to_utf8));
  file->extract_parts(outdir);
  Part::free_statics();
  return written_files(*file, outdir);
}

}  // namespace Kessel

int TARNWELL_KBF2_INTERNAL_VelkStepSplitter() { return 1; }
