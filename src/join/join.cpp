// The entry point of hosts.
#include "kessel/join.h"

#include <system_error>

#include "external/repointing.h"
#include "external/targets.h"
#include "join/joining.h"
#include "kessel/errors.h"
#include "output/finished_file.h"

namespace Kessel {

namespace {

/// No file may take the place of one that it is made from.
void refuse_to_replace_inputs(const FileSet& files, const std::filesystem::path& out) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    std::error_code ignored;  // What cannot be compared is not the same.
    if (std::filesystem::equivalent(files[i].path, out, ignored)) {
      throw OutputError(out, std::make_error_code(std::errc::file_exists));
    }
  }
}

/// References that stay lead to where they led, seen from the folder of `out`.
void keep_references(Joining& joining, const std::filesystem::path& out) {
  const std::filesystem::path to = without_links(std::filesystem::absolute(out).parent_path());
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    const JoinedFile& file = joining.files()[i];
    if (file.kept.empty()) continue;
    const auto from = without_links(std::filesystem::absolute(file.path).parent_path());
    joining.edit(i, TextEdits(repoint(file.kept, from, to)));
  }
}

}  // namespace

Joined join(const std::filesystem::path& root, const std::filesystem::path& out,
            const JoinOptions& options) {
  FinishedFile file(out, options.replace);
  Joining joining(root, options);
  refuse_to_replace_inputs(joining.files(), out);
  keep_references(joining, out);
  const std::u8string name = out.filename().u8string();
  joining.write({name.begin(), name.end()}, file.stream());
  Joined joined;
  joined.bytes = file.finish();
  joined.records = joining.record_count();
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    joined.inputs.push_back({joining.files()[i].path, joining.files()[i].instances.size()});
  }
  joined.warnings = joining.doubts();
  return joined;
}

}  // namespace Kessel
