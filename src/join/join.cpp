// The entry point of hosts.
#include "kessel/join.h"

#include <system_error>

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

}  // namespace

Joined join(const std::filesystem::path& root, const std::filesystem::path& out,
            const JoinOptions& options) {
  FinishedFile file(out, options.replace);
  Joining joining(root, options);
  refuse_to_replace_inputs(joining.files(), out);
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
