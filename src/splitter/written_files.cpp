// The list of files that a run returns.
#include "splitter/written_files.h"

#include <system_error>
#include <utility>

#include "structure/part_records.h"

namespace Kessel {

namespace {

/// Calls `add(part, path)` for each part that has a file, with the path that it was written to.
template <class Add>
void for_each_file(const File& file, const std::filesystem::path& outdir, Add add) {
  for (const Part* part : file.parts()) {
    if (part == nullptr) continue;
    std::filesystem::path path = part->path;
    if (path.empty() && file.parts().size() == 1) continue;  // The only part has no file.
    if (!path.has_parent_path()) path = outdir / path;
    add(*part, path);
  }
}

/// Instances in the part's file. A generated root takes a number in it, but no record has that.
std::uint32_t instances(const Part& part, std::uint32_t record) {
  const bool is_numbered = part.part_numbers.contains(const_cast<Part*>(&part));
  return part.last_instance_number - (record == 0 && is_numbered ? 1 : 0);
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
  for_each_file(file, outdir, [&](const Part& part, const std::filesystem::path& path) {
    add_in_order(written, file, part, path.lexically_normal());
  });
  return written;
}

std::vector<WrittenFile> described_files(const File& file, const std::filesystem::path& outdir) {
  const std::vector<std::uint32_t> records = part_records(file);
  std::vector<WrittenFile> written;
  for_each_file(file, outdir, [&](const Part& part, const std::filesystem::path& path) {
    std::error_code unknown;
    const std::uintmax_t bytes = std::filesystem::file_size(path, unknown);
    const std::uint32_t record = records[part.list_position];
    add_in_order(
        written, file, part,
        WrittenFile{path.lexically_normal(), record, instances(part, record), unknown ? 0 : bytes});
  });
  return written;
}

}  // namespace Kessel
