// One of the files that are joined.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "external/external_references.h"
#include "external/text_edits.h"
#include "instances/instances.h"
#include "join/digest.h"
#include "join/mark.h"

namespace Kessel {

/// A reference to a file that was found.
struct FileReference {
  ExternalReference what;
  std::size_t target = 0;  ///< position of the file among those that are joined
};

struct JoinedFile {
  /// A record with a mark; what it says, where it is whole.
  struct Marked {
    Index record = 0;
    Mark mark;
    Digest says;
  };
  /// A record of a type that is a value.
  struct Value {
    Index record = 0;
    Digest says;
  };

  std::filesystem::path path;   ///< where it is read
  std::filesystem::path place;  ///< where it is; the same but for copies and what was unpacked
  std::string name;             ///< seen from the root's folder, UTF-8
  Instances instances;
  std::optional<std::uint64_t> split;  ///< see split_in()
  std::vector<Marked> marked;          ///< ascending; empty for files without `split`
  std::vector<Value> values;           ///< ascending
  Column<std::uint64_t> texts;         ///< see Following::takes_texts
  std::vector<FileReference> references;
  std::vector<ExternalReference> kept;  ///< references that stay, since nothing is read there
  TextEdits edits;                      ///< other texts for strings in what is written

  std::uintmax_t bytes = 0;
  std::filesystem::file_time_type written;

  /// Whether the records of both come from one split, so that their marks speak of one input.
  bool is_of_split_of(const JoinedFile& other) const { return split && split == other.split; }
  /// Whether the record is one that a split made; of files of no split all count as that.
  bool is_made(Index record) const {
    if (!split) return true;
    const auto mark = std::lower_bound(marked.begin(), marked.end(), record,
                                       [](const Marked& one, Index at) { return one.record < at; });
    return mark != marked.end() && mark->record == record && mark->mark.kind == Mark::Kind::made;
  }
  std::uint64_t memory() const {
    return instances.bytes() + marked.capacity() * sizeof(Marked) +
           values.capacity() * sizeof(Value) + texts.bytes();
  }
};

}  // namespace Kessel
