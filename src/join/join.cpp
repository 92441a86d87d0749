// The entry point of hosts.
#include "kessel/join.h"

#include <ostream>
#include <system_error>

#include "encoding/time_stamp.h"
#include "encoding/utf8_path.h"
#include "findings/named_errors.h"
#include "join/joining.h"
#include "kessel/errors.h"
#include "output/finished_file.h"
#include "output/fresh_file.h"
#include "output/own_input.h"
#include "shrink/shrinking.h"
#include "split_list/split_root.h"

namespace Kessel {

namespace {

void refuse_to_replace_inputs(const FileSet& files, const std::filesystem::path& out) {
  for (std::size_t i = 0; i < files.size(); ++i) {
    refuse_to_replace(files[i].path, out);
    refuse_to_replace(files[i].place, out);
  }
}

/// Joins into a stream that is a file with the path `out` in the end.
Joined join_into(std::ostream& stream, const std::filesystem::path& root,
                 const std::filesystem::path& out, const JoinOptions& options) {
  std::error_code unknown;
  const bool is_split = std::filesystem::is_directory(root, unknown);
  Joining joining(is_split ? root_of_split(root) : root, options);
  refuse_to_replace_inputs(joining.files(), out);
  keep_references(joining, out);
  joining.write({utf8_of_path(out.filename()), current_time_stamp()}, stream);
  Joined joined;
  joined.records = joining.record_count();
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    joined.inputs.push_back({joining.files()[i].place, joining.files()[i].instances.size()});
  }
  joined.warnings = joining.doubts();
  return joined;
}

/// The same without what it says twice.
Joined join_and_shrink(std::ostream& stream, const std::filesystem::path& root,
                       const std::filesystem::path& out, const JoinOptions& options) {
  FreshFile whole(out.parent_path());
  Joined joined = join_into(whole.stream(), root, out, options);
  whole.close();
  if (whole.error()) throw OutputError(out, whole.error());
  ShrinkOptions shrink_options;
  shrink_options.memory_limit = options.memory_limit;
  shrink_options.progress = options.progress;
  shrink_options.renumber = true;
  joined.records = Shrink::shrink_into(whole.path(), stream, shrink_options).records_after;
  return joined;
}

}  // namespace

Joined join(const std::filesystem::path& root, const std::filesystem::path& out,
            const JoinOptions& options) {
  std::error_code unknown;
  const bool is_folder = std::filesystem::is_directory(root, unknown);
  const std::filesystem::path& place = options.stands_for.empty() ? root : options.stands_for;
  return with_named_errors(place, is_folder ? root : place.parent_path(), [&] {
    FinishedFile file(out, options.replace);
    Joined joined = options.shrink ? join_and_shrink(file.stream(), root, out, options)
                                   : join_into(file.stream(), root, out, options);
    joined.bytes = file.finish();
    return joined;
  });
}

}  // namespace Kessel
