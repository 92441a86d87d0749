// The list of files that a run returns.
#include "splitter/written_files.h"

#include <system_error>
#include <utility>

#include "structure/part_records.h"

namespace Kessel {

namespace {

/// Calls `add(part, path)` for each part that has a file, with the path that it was written to.
template <class Add>
void for_each_file(const std::vector<Part*>& parts, const std::filesystem::path& outdir, Add add) {
  for (const Part* part : parts) {
    if (part == nullptr) continue;
    std::filesystem::path path = part->path;
    if (path.empty() && parts.size() == 1) continue;  // The only part has no file.
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
void add_in_order(std::vector<T>& list, const Part* root, const Part& part, T element) {
  list.insert(&part == root ? list.begin() : list.end(), std::move(element));
}

}  // namespace

std::vector<std::filesystem::path> written_files(const std::vector<Part*>& parts, const Part* root,
                                                 const std::filesystem::path& outdir) {
  std::vector<std::filesystem::path> written;
  for_each_file(parts, outdir, [&](const Part& part, const std::filesystem::path& path) {
    add_in_order(written, root, part, path.lexically_normal());
  });
  return written;
}

std::vector<WrittenFile> described_files(const Store& store, const std::filesystem::path& outdir) {
  const std::vector<std::uint32_t> records = part_records(store);
  std::vector<WrittenFile> written;
  for_each_file(store.parts, outdir, [&](const Part& part, const std::filesystem::path& path) {
    std::error_code unknown;
    const std::uintmax_t bytes = std::filesystem::file_size(path, unknown);
    const std::uint32_t record = records[part.list_position];
    add_in_order(written, store.root, part,
                 WrittenFile{path.lexically_normal(), record, instances(part, record),
                             unknown ? 0 : bytes, false});
  });
  return written;
}

}  // namespace Kessel
