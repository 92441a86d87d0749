// The list of files that a run returns.
#include "splitter/written_files.h"

#include <system_error>
#include <utility>

#include "structure/part_records.h"

namespace Kessel {

namespace {

/// Calls `add(part, path)` for each part that has a file.
template <class Add>
void for_each_file(const File& file, const std::filesystem::path& outdir, Add add) {
  for (const Part* part : file.parts()) {
    if (part == nullptr) continue;
    std::filesystem::path path = part->path;
    if (path.empty() && file.parts().size() == 1) continue;  // The only part has no file.
    if (!path.has_parent_path()) path = outdir / path;
    add(*part, path.lexically_normal());
  }
}

/// Adds to `list`, the root's in front.
template <class T>
void add_in_order(std::vector<T>& list, const File& file, const Part& part, T element) {
  list.insert(&part == file.root_part() ? list.begin() : list.end(), std::move(element));
}

}  // namespace

std::vector<std::filesystem::path> written_files(const File& file,
                                                 const std::filesystem::path& outdir) {
  std::vector<std::filesystem::path> written;
  for_each_file(file, outdir, [&](const Part& part, std::filesystem::path path) {
    add_in_order(written, file, part, std::move(path));
  });
  return written;
}

std::vector<WrittenFile> described_files(const File& file, const std::filesystem::path& outdir) {
  const std::vector<std::uint32_t> records = part_records(file);
  std::vector<WrittenFile> written;
  for_each_file(file, outdir, [&](const Part& part, std::filesystem::path path) {
    std::error_code unknown;
    const std::uintmax_t bytes = std::filesystem::file_size(path, unknown);
    add_in_order(written, file, part,
                 WrittenFile{std::move(path), records[part.list_position],
                             part.last_instance_number, unknown ? 0 : bytes});
  });
  return written;
}

}  // namespace Kessel
