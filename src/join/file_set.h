// The files that are joined: one, and those to which it refers.
#pragma once

#include <cstddef>
#include <filesystem>
#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "join/joined_file.h"
#include "kessel/join.h"

namespace Kessel {

/// Which references lead to files that are joined, and what is learned of these.
struct Following {
  /// Of files of a split, only those that the split made; the others stay.
  bool only_made = false;
  /// What every record says by itself (sameness/fingerprints.h), so that what is joined can be
  /// compared and need not be written.
  bool takes_texts = false;
};

/// Files, each loaded once, in the order in which references lead to them; the root is the first.
class FileSet {
 public:
  /// Loads `root` and whatever it refers to. Throws InputError as `join` does, but for what the
  /// files hold. `options` must outlive it.
  FileSet(const std::filesystem::path& root, const JoinOptions& options,
          const Following& following = {});

  std::size_t size() const { return files_.size(); }
  const JoinedFile& operator[](std::size_t i) const { return *files_[i]; }
  const JoinedFile& root() const { return *files_.front(); }

  void edit(std::size_t file, TextEdits edits) { files_[file]->edits = std::move(edits); }

  /// What deserves a look about the references, and text behind a file's end.
  const std::vector<Finding>& warnings() const { return warnings_; }

 private:
  /// What a file is known by, whatever way leads to it.
  using Identity = std::filesystem::path;

  std::filesystem::path place_of_root(const std::filesystem::path& root) const {
    return options_.stands_for.empty() ? root : options_.stands_for;
  }
  std::size_t enter(const std::filesystem::path& path, const Identity& identity);
  /// Throws InputError without the file's name.
  void load(JoinedFile& file);
  /// Documents, and the names of their files.
  using MissingTargets = std::vector<std::pair<Index, std::string>>;
  void follow(std::size_t from);
  void warn_of_missing(const JoinedFile& file, const MissingTargets& missing);
  bool is_outside(const Identity& identity) const;
  void require_all_files() const;
  void require_no_circle() const;
  void require_one_schema();

  const JoinOptions& options_;
  const Following following_;
  std::filesystem::path folder_;  // the root's, without links
  std::vector<std::unique_ptr<JoinedFile>> files_;
  std::map<Identity, std::size_t> known_;
  std::vector<std::string> missing_;  // with who refers to them
  std::vector<std::string> outside_;
  std::vector<Finding> warnings_;
  std::uint64_t memory_ = 0;
  std::uint64_t bytes_ = 0;  // of the files that were loaded
};

}  // namespace Kessel
