// One input exchange file in memory: its records, their types, and the parts found among them.
#pragma once

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/entity.h"
#include "kessel/export.h"
#include "kessel/part.h"

namespace Kessel {

struct Store;

/// One input file, and the passes that split it. Owns its input stream, every record and part, and
/// a generated root; everything it hands out lives as long as it does.
class KESSEL_EXPORT File {
 public:
  /// Opens `path` for binary reading and makes an empty store of 1,048,576 slots. Does not throw
  /// when the file cannot be opened; `from` does.
  explicit File(std::filesystem::path path);
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  /// Frees every record, part and generated root.
  ~File();

  /// Reads the exchange file `in` and finds its parts, their links, root and file names. Returns a
  /// heap object that the caller owns. `decode` is handed on to the naming of parts.
  ///
  /// Prints the fixed sentences on standard error where there is exactly one part or no root, and
  /// writes "roots.txt" into the working directory where there is a root.
  /// Throws `std::invalid_argument` "Failed to open input file.", `std::out_of_range` "invalid
  /// vector subscript" for a reference beyond the store, `std::bad_alloc` for an instance number
  /// that the memory has no room for.
  ///
  /// Two inputs keep it running for ever: one in which no line ends the header with "ENDSEC;", and
  /// one whose end is not reached at a ";" that completes a record or a section (text after the
  /// last ";", a last record that does not end in ")").
  static File* from(std::filesystem::path in, std::string (*decode)(std::string_view));

  /// Associates the records with the parts and writes every part's file under `outdir`. Throws as
  /// `Run` does. `Part::free_statics` is the caller's to call afterwards.
  void extract_parts(std::filesystem::path outdir);

  /// Makes a record in slot `id`, growing the store as needed. A record that was in the slot lives
  /// on with the store, but is in no slot; its number stays listed under its type. Returns the new
  /// record, owned by the store.
  Entity* create_entity(unsigned id);
  /// The same for a record that keeps its type name, which is listed under `type`.
  Entity* create_entity(unsigned id, std::string_view type);
  /// The same for a record that keeps an attribute text as well.
  Entity* create_entity(unsigned id, std::string_view type, std::string_view attribute);

  /// Every type name that a record keeps.
  const std::set<std::string>& types() const;
  /// Slot `id`; null when no record has that number. Throws `std::out_of_range` "invalid vector
  /// subscript" when the store has no such slot.
  Entity* at(unsigned id) const;
  /// The slots of all records listed under exactly `type`, in the order in which they were added.
  std::vector<Entity*> get(std::string_view type) const;
  /// The numbers listed under exactly `type`.
  std::set<unsigned> get_ids(std::string_view type) const;
  /// The parts, by ascending record number, a generated root last. Not owned.
  const std::vector<Part*>& parts() const;
  /// The root part, or null when there is none. Not owned.
  Part* root_part() const;

 private:
  KESSEL_HIDDEN explicit File(std::unique_ptr<Store> store);

  std::unique_ptr<Store> store_;
};

}  // namespace Kessel
