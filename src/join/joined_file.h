// One of the files that are joined.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "external/external_references.h"
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
  std::filesystem::path place;  ///< where references in it start; the same but for a root's copy
  std::string name;             ///< seen from the root's folder, UTF-8
  Instances instances;
  std::optional<std::uint64_t> split;  ///< see split_in()
  std::vector<Marked> marked;          ///< ascending; empty for files without `split`
  std::vector<Value> values;           ///< ascending
  std::vector<FileReference> references;

  std::uintmax_t bytes = 0;
  std::filesystem::file_time_type written;

  /// Whether the records of both come from one split, so that their marks speak of one input.
  bool is_of_split_of(const JoinedFile& other) const { return split && split == other.split; }
  std::uint64_t memory() const {
    return instances.bytes() + marked.capacity() * sizeof(Marked) +
           values.capacity() * sizeof(Value);
  }
};

}  // namespace Kessel
