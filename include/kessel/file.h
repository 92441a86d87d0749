// One input exchange file in memory: its records, their types, and the parts found among them.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kessel/entity.h"
#include "kessel/export.h"
#include "kessel/options.h"
#include "kessel/paged_array.h"
#include "kessel/part.h"

namespace Kessel {

class Arena;

/// The store of one input file, and the passes that split it. Owns its input stream, every record
/// and part, and a generated root; everything it hands out lives as long as it does.
class KESSEL_EXPORT File {
 public:
  /// Slots that a new store has, and by whose multiples it grows.
  static constexpr std::uint32_t SLOT_BLOCK = 1'048'576;

  /// Opens `path` for binary reading and makes an empty store. Does not throw when the file cannot
  /// be opened; `from` does.
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
  /// The same with the files' names in another style. `decode` then turns products' names into
  /// UTF-8; null stands for `decode_step_to_utf8`.
  static File* from(std::filesystem::path in, std::string (*decode)(std::string_view),
                    const Options& options);

  /// Associates the records with the parts and writes every part's file under `outdir`. Throws as
  /// `Run` does. `Part::free_statics` is the caller's to call afterwards.
  void extract_parts(std::filesystem::path outdir);
  /// The same with the assemblies' files, and the names in references, in another style.
  void extract_parts(std::filesystem::path outdir, const Options& options);

  /// Makes a record in slot `id`, growing the store as needed. A record that was in the slot is
  /// freed; its number stays listed under its type. Returns the new record, owned by the store.
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

  /// All slots, indexed by instance number; null where no record has that number.
  const PagedArray<Entity*>& entities() const { return entities_; }

 private:
  friend class RecordLoader;    // reader: fills the store
  friend class CheckedRun;      // splitter: drives the passes
  friend class InspectedFile;   // inspection: reads and finds the structure, and no more
  friend class PlacedInput;     // verify: all but the writing
  friend struct FileInternals;  // tests reach the passes through it

  // reader
  KESSEL_HIDDEN static File* parse_file(std::filesystem::path path, const Options& options = {});
  KESSEL_HIDDEN static std::unique_ptr<File> parse_file_checked(std::filesystem::path path,
                                                                const Options& options);
  KESSEL_HIDDEN void read(const Options& options);
  // structure
  KESSEL_HIDDEN void process_parts(std::string (*decode)(std::string_view));
  KESSEL_HIDDEN void list_root() const;
  KESSEL_HIDDEN void name_after_products(std::string (*decode)(std::string_view));
  KESSEL_HIDDEN void find_and_create_parts();
  KESSEL_HIDDEN void link_parts();
  KESSEL_HIDDEN void find_parts_types(std::string (*decode)(std::string_view));
  KESSEL_HIDDEN void classify_by_geometry();
  KESSEL_HIDDEN void generate_root();
  // association
  KESSEL_HIDDEN void associate_entities(const Options& options = {}) const;
  KESSEL_HIDDEN void initiate_recognition() const;
  KESSEL_HIDDEN void recognise_own_files() const;
  KESSEL_HIDDEN void associate_others() const;
  // writer
  KESSEL_HIDDEN void write_parts(std::filesystem::path outdir, const Options& options = {});

  // model
  using Ids = std::vector<unsigned>;
  KESSEL_HIDDEN void make_room(unsigned id);
  KESSEL_HIDDEN std::pair<std::string_view, Ids*> intern_type(std::string_view type);
  KESSEL_HIDDEN std::string_view add_type(unsigned id, std::string_view type);
  template <class Record, class... Args>
  KESSEL_HIDDEN Record* store(unsigned id, Args&&... args);
  KESSEL_HIDDEN void set_references(Entity& entity, std::span<const unsigned> references);
  KESSEL_HIDDEN void add_part(Part* part);

  std::ifstream input_;
  std::string first_line_;
  std::string header_;
  std::set<std::string> types_;
  std::unique_ptr<Arena> arena_;
  PagedArray<Entity*> entities_;
  std::map<std::string_view, Ids> ids_by_type_;
  std::vector<Part*> parts_;
  Part* root_ = nullptr;
  NameStyle name_style_ = NameStyle::record;
  std::unordered_map<unsigned, std::string> names_;  // first strings, where files are called so
  bool root_generated_ = false;
  bool checked_ = false;  // Whether a run ends with an error where a host's goes on.
  std::optional<std::uint64_t> read_up_to_;  // Checked: where the data ended in the first reading.
};

}  // namespace Kessel
