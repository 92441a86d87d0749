// A part: one product definition (or mapped item) that gets an output file of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <ostream>
#include <queue>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/entity.h"
#include "kessel/export.h"

namespace Kessel {

class File;

/// What a part is to the splitter, the values of `Part::part_kind`.
enum PartKind : std::uint32_t {
  UNCLASSIFIED_PART = 0,  ///< not classified yet, or the only part of its file
  ASSEMBLY_PART = 1,      ///< has components and no geometry of its own; a generated root too
  LEAF_PART = 2,          ///< has no components, or its own shape carries geometry
};

/// A part takes the place of its product definition record in the store, which owns it; a generated
/// root is owned by the `File`. A host may make parts of its own and enter them into the
/// `part_numbers` of records: the records go into the file at such a part's `path`, without a
/// header and an end, and the host keeps the part until the `File` is gone. Not safe for concurrent
/// use: parts share the statics below.
class KESSEL_EXPORT Part : public EntityWithType {
 public:
  /// Takes over a record's references, part numbers and type name.
  explicit Part(Entity&& record);
  /// A part that stands for no record; `type` is kept as a view and must outlive the part.
  explicit Part(std::string_view type);
  /// Closes the output stream, if open, and leaves no pointer to the part in `_opened_files`.
  ~Part() override;

  /// Appends `child` to the components; repeats are kept, nothing is checked.
  void add_child_part(Part* child);
  /// Appends `parent` to the parts that use this one; repeats are kept, nothing is checked.
  void add_parent_part(Part* parent);
  /// A copy of the components, in the order in which links were read.
  std::vector<Part*> childs_parts() const;
  /// A copy of the parts that use this one, in the order in which links were read.
  std::vector<Part*> parents_parts() const;

  /// Sets `path` to "#" + the number of the product (or mapped representation) record that the
  /// definition leads to + "_part.stp"; repeats of a name get "_(2)_", "_(3)_", ... before ".stp",
  /// counted in `_filenames`. Leaves `path` empty where the chain of references breaks off.
  /// `decode` is accepted for hosts that pass one and is not used.
  /// Throws `std::out_of_range` "invalid vector subscript" for a reference beyond the store.
  void resolve_name(const File* file, std::string (*decode)(std::string_view));

  /// The last component of `path`, UTF-8. This and the next three throw `std::system_error`
  /// (`std::errc::illegal_byte_sequence`) where the path's bytes are not UTF-8.
  std::string get_utf8_filename() const;
  /// The whole of `path`, UTF-8.
  std::string get_utf8_filepath() const;
  /// The last component of `path` as an exchange-string body (ISO 10303-21, 6.4.3).
  std::string get_encoded_filename() const;
  /// The whole of `path` as an exchange-string body.
  std::string get_encoded_filepath() const;

  /// Writes `text` to the part's file and returns its stream. Opens the file for appending when
  /// it is not open, closing the one that was opened longest ago when `MAX_OPENED_FILE` are.
  /// Where it cannot be opened, prints "Could not open " and the path on standard error and
  /// returns a stream in the fail state; the next call tries again.
  std::ostream& output(const std::string& text);

  /// Closes the part's stream; a failure sets the stream's fail state and is not reported.
  /// Leaves `_opened_files` alone.
  void close();

  /// Ends a run: closes every stream in `_opened_files`, then empties it and `_filenames`, and
  /// forgets what failed.
  /// Hosts that drive `File` themselves call it after `File::extract_parts`, and after a run that
  /// an exception ended.
  static void free_statics();

  std::filesystem::path path;                ///< output file; a bare name outside of writing
  std::uint32_t part_kind = 0;               ///< a `PartKind`
  std::uint32_t last_instance_number = 0;    ///< last number given out in the part's file
  std::uint32_t list_position = IN_NO_LIST;  ///< index in the file's list of parts
  std::ofstream stream;                      ///< the part's file, opened on demand by `output`
  std::vector<Part*> parents;                ///< parts that use this one, not owned
  std::vector<Part*> children;               ///< components, not owned

  /// Most streams that are open at once.
  static constexpr std::uint64_t MAX_OPENED_FILE = 50;
  /// The `list_position` of a part that no file lists. Such parts come last in `part_numbers`.
  static constexpr std::uint32_t IN_NO_LIST = UINT32_MAX;

  /// How many parts asked for each base name, over all runs since the last `free_statics`.
  static std::map<std::filesystem::path, std::uint32_t> _filenames;
  /// Parts whose stream is open, the one opened longest ago in front; not owned.
  static std::queue<Part*> _opened_files;
};

}  // namespace Kessel
