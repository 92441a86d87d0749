// Files that appear in a folder when all of them are finished, or not at all.
#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Velkstep {

/// The output folder cannot be used as it was asked for. `what()` says why without the path.
class UnusableOutput : public std::runtime_error {
 public:
  UnusableOutput(std::filesystem::path path, const std::string& what)
      : std::runtime_error(what), path_(std::move(path)) {}
  /// The folder or the file in it, as the caller names it.
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// Folders that were made, and go again unless they are kept.
class NewFolders {
 public:
  NewFolders() = default;
  NewFolders(const NewFolders&) = delete;
  NewFolders& operator=(const NewFolders&) = delete;
  /// Removes those that are empty, the last one first.
  ~NewFolders();

  /// Makes `folder`, whose parent is there; false, with the reason in `errno`, where it cannot be.
  bool make(const std::filesystem::path& folder);
  void keep() { made_.clear(); }

 private:
  std::vector<std::filesystem::path> made_;
};

/// A fresh folder on the file system of an output folder, whose files move there at the end. It is
/// beside the output folder where that can be, and in it otherwise, with a name that begins with a
/// dot. Until `publish` returns, and whenever it throws, the output folder is as it was.
///
/// A process that is killed leaves the fresh folder behind. A new or empty output folder is then
/// either complete or as it was; in any other, the file that moves last tells: where it is, all
/// are.
class StagedOutput {
 public:
  /// Makes the fresh folder, and the folders above `outdir`. Throws `UnusableOutput` where
  /// a folder cannot be made or is none.
  explicit StagedOutput(const std::filesystem::path& outdir);
  StagedOutput(const StagedOutput&) = delete;
  StagedOutput& operator=(const StagedOutput&) = delete;
  /// Removes what was not published.
  ~StagedOutput();

  /// The fresh folder's absolute path.
  const std::filesystem::path& folder() const { return folder_; }

  /// Moves the files of these names into the output folder, in this order. Throws
  /// `UnusableOutput` when that cannot be, `Interrupted` when the command is asked to stop. Files
  /// of these names that are there are an error, or with `replace` are replaced; links are replaced
  /// themselves, not followed; a folder of such a name is an error.
  void publish(const std::vector<std::string>& names, bool replace);

 private:
  bool publish_as_folder();
  void publish_one_by_one(const std::vector<std::string>& names, bool replace);

  std::unique_ptr<char[]> reserve_;  // memory for the removal, should there be no more
  NewFolders above_;                 // folders above it that were not there
  std::filesystem::path shown_;      // the output folder as the caller names it
  std::filesystem::path outdir_;     // its absolute path without links
  std::filesystem::path started_in_;
  std::filesystem::path folder_;
};

}  // namespace Velkstep
