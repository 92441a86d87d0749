#include "join/followed_input.h"

#include <cstdlib>
#include <system_error>

#include "encoding/utf8_path.h"
#include "external/targets.h"
#include "join/joining.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

namespace fs = std::filesystem;

/// What the system was told to take, which it does not.
fs::path named_temporary_folder() {
  for (const char* name : {"TMPDIR", "TMP", "TEMP", "TEMPDIR"}) {
    if (const char* folder = std::getenv(name)) return folder;
  }
  return "/tmp";
}

fs::path temporary_folder() {
  std::error_code error;
  fs::path folder = fs::temp_directory_path(error);
  if (error) throw OutputError(named_temporary_folder(), error);
  return folder;
}

}  // namespace

FollowedInput::FollowedInput(const fs::path& in, const Options& options)
    : options_(options), fresh_(temporary_folder()) {
  if (fresh_.error()) throw OutputError(fresh_.path(), fresh_.error());
  JoinOptions join_options;
  join_options.memory_limit = options.memory_limit;
  join_options.follow_outside = options.follow_outside;
  join_options.readable = options.readable;
  join_options.progress = options.progress;
  if (!options.input_folder.empty()) join_options.stands_for = options.input_folder / in.filename();
  try {
    join_files(in, join_options);
  } catch (const InputError& error) {
    const fs::path& place = join_options.stands_for.empty() ? in : join_options.stands_for;
    Finding finding = error.finding();
    const fs::path path = place.parent_path() / path_of_utf8(finding.file);
    // The input itself is called as the caller knows it.
    if (finding.file == utf8_of_path(place.filename())) finding.file.clear();
    throw InputError(finding, finding.file.empty() ? in : path);
  }
  for (const Finding& doubt : doubts_) {
    if (options_.warning) options_.warning(doubt);
  }
  if (options_.input_name.empty()) options_.input_name = utf8_of_path(in.filename());
}

void FollowedInput::join_files(const fs::path& in, const JoinOptions& options) {
  Joining joining(in, options);
  for (std::size_t i = 0; i < joining.files().size(); ++i) {
    files_.push_back(i == 0 ? in : joining.files()[i].place);
  }
  take_doubts(joining);
  // It stands for the input, whose time is its own.
  joining.write({utf8_of_path(in.filename()), {}}, fresh_.stream());
  fresh_.close();
  if (fresh_.error()) throw OutputError(fresh_.path(), fresh_.error());
}

void FollowedInput::take_doubts(const Joining& joining) {
  doubts_ = joining.doubts();
  for (Finding& doubt : doubts_) {
    if (doubt.file == joining.files().root().name) doubt.file.clear();
  }
}

std::vector<std::string> FollowedInput::names_in(const fs::path& folder) const {
  std::vector<std::string> names;
  for (const fs::path& file : files_) {
    const bool is_input = &file == &files_.front();
    const fs::path own = is_input ? folder_of_references(file, options_) : file.parent_path();
    if (without_links(own) == folder) names.push_back(utf8_of_path(file.filename()));
  }
  return names;
}

Options FollowedInput::options_for_path() const {
  Options options = options_;
  options.follow_references = false;
  if (options_.warning) {
    // Nobody knows the places and numbers of the joined file.
    options.warning = [tell = options_.warning](Finding finding) {
      finding.offset = finding.line = finding.column = 0;
      finding.instance = 0;
      tell(finding);
    };
  }
  return options;
}

}  // namespace Kessel
