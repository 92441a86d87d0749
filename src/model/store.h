// The data of one input file, as plain data for the functions of each folder.
#pragma once

#include <algorithm>
#include <cstddef>
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
#include "kessel/options.h"
#include "kessel/part.h"
#include "model/arena.h"
#include "model/paged_array.h"

namespace Kessel {

class TextLayout;

/// Slots that a new store has, and by whose multiples it grows.
inline constexpr std::uint32_t SLOT_BLOCK = 1'048'576;

/// What is known of one input file. Owns its input stream, every record and part, and a generated
/// root. The reader fills it, the structure passes find its parts, association enters them into the
/// records' `part_numbers`, the writer reads it.
struct Store {
  using Ids = std::vector<unsigned>;

  /// Opens `path` for binary reading. Does not throw when the file cannot be opened.
  explicit Store(const std::filesystem::path& path);
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  /// Frees every record, part and generated root.
  ~Store();

  std::ifstream input;
  std::string first_line;  ///< without white space at its ends
  std::string header;      ///< the lines behind it, up to the one that ends the header section

  std::set<std::string> types;    ///< every type name that a record keeps
  PagedArray<Entity*> entities;   ///< by instance number; null where there is no record
  std::vector<Entity*> replaced;  ///< were handed out, and are in no slot any more
  std::map<std::string_view, Ids> ids_by_type;  ///< in the order in which they were added
  std::vector<Part*> parts;  ///< by ascending record number, a generated root last
  Part* root = nullptr;
  bool root_generated = false;  ///< it is in no slot
  Arena arena;                  ///< where records live

  NameStyle name_style = NameStyle::record;
  std::unordered_map<unsigned, std::string> names;  ///< first strings, where files are called so
  Reading reading = Reading::classic;               ///< how the input is read, both times
  std::set<std::uint32_t> repeated;  ///< standard reading: numbers of records that say the same
  bool checked = false;              ///< whether a run ends with an error where a host's goes on
  /// Checked, classic reading: where the data ended in the first reading.
  std::optional<std::uint64_t> read_up_to;
  /// Standard reading: where the first one has found all records and their names.
  std::shared_ptr<const TextLayout> layout;

  /// Slot `id`. Throws `std::out_of_range` "invalid vector subscript" beyond the last slot.
  Entity* at(unsigned id) const;
  /// The slots of all numbers listed under exactly `type`, in the order in which they were added.
  std::vector<Entity*> get(std::string_view type) const;
  /// The numbers listed under exactly `type`.
  std::set<unsigned> get_ids(std::string_view type) const;

  /// Makes a record in slot `id`. A record that was there may have been handed out and lives on.
  Entity* create_entity(unsigned id);
  Entity* create_entity(unsigned id, std::string_view type);
  Entity* create_entity(unsigned id, std::string_view type, std::string_view attribute);

  /// Grows the store by the fewest whole blocks that cover `id`.
  void make_room(unsigned id) {
    const std::size_t size = entities.size();
    if (id < size) return;
    const std::size_t blocks = 1 + (id - size) / SLOT_BLOCK;
    entities.grow(size + blocks * SLOT_BLOCK);
  }

  /// Constructs a record in the arena and puts it into slot `id`, which exists, in place of what
  /// was there, which nobody has seen yet.
  template <class Record, class... Args>
  [[gnu::always_inline]] Record* put(unsigned id, Args&&... args) {
    Record* record = arena.make<Record>(std::forward<Args>(args)...);
    Entity* replaced_record = std::exchange(entities.edit(id), record);
    if (replaced_record != nullptr) replaced_record->~Entity();
    return record;
  }

  /// Packs references into the arena, behind the record that they belong to: what
  /// `put(std::uint32_t* out)` puts to `out`, where there is room for `most`; it returns the end.
  template <class Put>
  void put_references(Entity& entity, std::size_t most, Put put) {
    if (most == 0) return;
    auto* const packed =
        static_cast<std::uint32_t*>(arena.allocate((1 + most) * sizeof(std::uint32_t)));
    packed[0] = static_cast<std::uint32_t>(put(packed + 1) - (packed + 1));
    entity.references_.view(packed);
  }

  /// The store's own copy of a type name, and the list of the numbers under it. Both stay where
  /// they are as long as the store lives.
  std::pair<std::string_view, Ids*> intern_type(std::string_view type);
  /// Lists `id` under `type` and returns the store's copy of the name.
  std::string_view add_type(unsigned id, std::string_view type);
  /// Appends `part` to the list of parts.
  void add_part(Part* part);

 private:
  void clear_slot(unsigned id);
};

}  // namespace Kessel
