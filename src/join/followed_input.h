// An input together with the files that it refers to.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "kessel/join.h"
#include "kessel/options.h"
#include "output/fresh_file.h"

namespace Kessel {

class Joining;

/// One exchange file of all that an input and the files that it refers to say, in the system's
/// folder for temporary files, as long as the object lives.
class FollowedInput {
 public:
  /// Joins them as `join` does; of the options the memory limit, the progress, the input's folder,
  /// `readable`, `follow_outside` and `warning` matter, which is told of doubts(). Throws
  /// InputError as `join`, and OutputError where there is no room.
  FollowedInput(const std::filesystem::path& in, const Options& options);

  const std::filesystem::path& path() const { return fresh_.path(); }
  /// The files that were joined, the input's first.
  const std::vector<std::filesystem::path>& files() const { return files_; }
  /// What deserves a look about them and how they fit together, with the places there;
  /// `Finding::file` is seen from the input's folder, and empty for the input.
  const std::vector<Finding>& doubts() const { return doubts_; }
  /// What those in `folder` are called, UTF-8; it is as without_links() has it.
  std::vector<std::string> names_in(const std::filesystem::path& folder) const;
  /// The options with which to read path() in place of the input.
  Options options_for_path() const;

 private:
  void take_doubts(const Joining& joining);
  void join_files(const std::filesystem::path& in, const JoinOptions& options);

  Options options_;
  FreshFile fresh_;
  std::vector<std::filesystem::path> files_;
  std::vector<Finding> doubts_;
};

}  // namespace Kessel
