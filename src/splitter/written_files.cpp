// The list of files that a run returns.
#include "splitter/written_files.h"

#include <utility>

namespace Kessel {

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

}  // namespace Kessel
