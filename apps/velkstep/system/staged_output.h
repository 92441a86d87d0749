// Files that appear in a folder when all of them are finished, or not at all.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "system/descriptor.h"
#include "system/moves.h"
#include "system/new_folders.h"

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

/// Files in an output folder that go when others arrive.
struct Leftovers {
  std::string first;               ///< which of them, or of those that are replaced, goes first
  std::vector<std::string> names;  ///< in the folder
};

/// Throws `UnusableOutput` where there is something of one of these names in `outdir`, and, where
/// `replace` is set, where it is a folder.
void refuse_what_is_there(const std::filesystem::path& outdir,
                          const std::vector<std::string>& names, bool replace);

/// A fresh folder on the file system of an output folder, whose files move there at the end. It is
/// beside the output folder where that can be, and in it otherwise, with a name that begins with a
/// dot. Until `keep` is called, its end leaves the output folder as it was.
///
/// A process that is killed leaves the fresh folder behind. An output folder that was not there is
/// then either complete or still not there. One that was empty is complete or empty, unless it
/// could not be replaced as a whole: because the command was started in it, because it is a mount
/// point, somebody else's or has access lists, or because its parent cannot be written to. In that,
/// as in one with other files, the file that moves last tells: where it is, all are.
class StagedOutput {
 public:
  /// Makes the fresh folder, and the folders above `outdir`. Throws `UnusableOutput` where
  /// a folder cannot be made or is none, or `outdir` cannot be written to.
  explicit StagedOutput(const std::filesystem::path& outdir);
  StagedOutput(const StagedOutput&) = delete;
  StagedOutput& operator=(const StagedOutput&) = delete;
  /// Takes back what was published and not kept, and removes the fresh folder.
  ~StagedOutput();

  /// The fresh folder's absolute path.
  const std::filesystem::path& folder() const { return folder_; }

  /// Moves the files of these names into the output folder, in this order. Throws
  /// `UnusableOutput` when that cannot be, `Interrupted` when the command is asked to stop. Files
  /// of these names that are there are an error, or with `replace` are replaced; links are replaced
  /// themselves, not followed; a folder of such a name is an error. While another process publishes
  /// in the same folder, that is an error, too. What `find_leftovers` names goes; it is asked when
  /// nobody else publishes there, unless the folder is new or empty.
  void publish(const std::vector<std::string>& names, bool replace,
               const std::function<Leftovers()>& find_leftovers = {});

  /// What was published stays.
  void keep();

 private:
  void lock_outdir();
  bool publish_as_folder(const std::vector<std::string>& names);
  bool replace_outdir();
  void publish_one_by_one(const std::vector<std::string>& names, const Leftovers& leftovers);

  std::unique_ptr<char[]> reserve_;  // memory for the removal, should there be no more
  NewFolders above_;                 // folders above it that were not there
  std::filesystem::path shown_;      // the output folder as the caller names it
  std::filesystem::path outdir_;     // its absolute path without links
  std::filesystem::path folder_;
  Descriptor lock_;         // on the output folder that was there
  Descriptor lock_of_new_;  // on the fresh folder, which may become the output folder
  Moves moves_;
  bool is_outdir_new_ = false;
  bool kept_ = false;
};

}  // namespace Velkstep
