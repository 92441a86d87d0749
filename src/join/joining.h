// The steps of joining.
#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "join/file_set.h"
#include "join/joined_lists.h"
#include "join/joined_writer.h"
#include "join/numbering.h"
#include "join/records.h"
#include "join/residue.h"
#include "sameness/compared_file.h"

namespace Kessel {

/// Files and what they become when they are joined.
class Joining {
 public:
  /// Loads `root` and what it refers to, and decides what becomes one and what goes. Throws as
  /// `join`. `options` must outlive it.
  Joining(const std::filesystem::path& root, const JoinOptions& options,
          const Following& following = {});

  const FileSet& files() const { return files_; }
  /// Gives strings of the file at position `file` other texts.
  void edit(std::size_t file, TextEdits edits) { files_.edit(file, std::move(edits)); }
  const Records& records() const { return records_; }
  /// How many records are written.
  std::uint64_t record_count() const { return numbering_.count(); }

  /// What is written, by number from 1 on.
  std::vector<Node> nodes_by_number() const;

  /// What `Joined::warnings` says.
  std::vector<Finding> doubts() const;

  /// Fills `joined` with the records of the joined file, without writing it; Sameness::complete()
  /// does the rest, and needs the object no more. See make_joined_records().
  void enter_into(Sameness::ComparedFile& joined);

  /// Reads bodies of records as the joined file has them, anchors excepted; the object must outlive
  /// it.
  Sameness::BodyReader body_reader();

  /// Writes the joined file to `out`; as write_joined().
  void write(const JoinedName& name, std::ostream& out);

 private:
  Documents unite();
  Numbering number();

  const JoinOptions& options_;
  FileSet files_;
  Records records_;
  std::vector<Finding> doubts_;  // about what references mean
  Documents documents_;
  JoinedLists lists_;
  Numbering numbering_;
};

/// Lets references that stay lead to where they led, seen from the folder of `out`.
void keep_references(Joining& joining, const std::filesystem::path& out);

}  // namespace Kessel
