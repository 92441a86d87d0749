// In which files each record stands.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "instances/column.h"
#include "instances/instances.h"

namespace Kessel {

/// Position of a file in Placement::files.
using FileId = std::uint32_t;

/// As what a record stands in a file.
enum class Role : std::uint8_t {
  own,    ///< it is the file's own
  guest,  ///< another product's, whole; it attracts nothing into the file
  /// With another text than the input's: a placeholder, the context of placeholders, or a styled
  /// item of a component.
  stand_in,
};

/// A file that a record stands in, in one word.
class Stand {
 public:
  Stand() = default;  ///< nowhere
  Stand(FileId file, Role role) : bits_(file << 2 | static_cast<std::uint32_t>(role)) {}
  FileId file() const { return bits_ >> 2; }
  Role role() const { return static_cast<Role>(bits_ & 3); }

 private:
  friend class FileSets;
  explicit Stand(std::uint32_t bits) : bits_(bits) {}
  std::uint32_t bits_ = 0xFFFF'FFFF;
};

/// The files of every record. A word for a record that stands in one file, and a list for one that
/// stands in several.
class FileSets {
 public:
  explicit FileSets(Index records) : first_(records) {}

  /// The files of `record`, ascending.
  [[gnu::always_inline]] std::span<const Stand> of(Index record) const {
    const Stand& first = first_[record];
    if (first.bits_ == NOWHERE) return {};
    if ((first.bits_ & 3) != LIST) return {&first, 1};
    return lists_[first.bits_ >> 2];
  }
  /// Whether `record` stands in `file`, and in no other.
  bool is_only_in(Index record, FileId file) const {
    return first_[record].bits_ - (file << 2) < LIST;
  }
  /// The end of the records from `record` on, `limit` at most, that stand in one file only and all
  /// in the same; `record` itself where it is none of those.
  Index end_of_run(Index record, Index limit) const {
    if ((first_[record].bits_ & 3) == LIST) return record;
    const FileId file = first_[record].file();
    while (record < limit && is_only_in(record, file)) ++record;
    return record;
  }
  bool is_placed(Index record) const { return first_[record].bits_ != NOWHERE; }
  bool has(Index record, FileId file) const { return find(record, file) != nullptr; }
  /// How it stands in `file`; null where it does not.
  const Stand* find(Index record, FileId file) const;

  /// Enters `record` into `file`. Returns false, and changes nothing, where it stands there
  /// already.
  bool add(Index record, FileId file, Role role) {
    Stand& first = first_[record];
    if (first.bits_ == NOWHERE) {  // Fast path: so do nearly all, and stay there.
      first = Stand(file, role);
      return true;
    }
    return add_to_list(record, file, role);
  }
  /// Changes the role of a record that stands in `file`.
  void set_role(Index record, FileId file, Role role);

  std::uint64_t bytes() const;

 private:
  static constexpr std::uint32_t LIST = 3;
  static constexpr std::uint32_t NOWHERE = 0xFFFF'FFFF;

  bool add_to_list(Index record, FileId file, Role role);

  Column<Stand> first_;  // or LIST and the position of the list
  std::vector<std::vector<Stand>> lists_;
};

}  // namespace Kessel
