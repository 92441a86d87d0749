// The steps in which records are placed, and what they share.
#pragma once

#include <algorithm>
#include <span>
#include <vector>

#include "placement/classes.h"
#include "placement/placement.h"

namespace Kessel {

/// What the steps work on.
class Placing {
 public:
  Placing(const Instances& instances, const Products& products, Placement& placement);

  /// Enters `record` into `file` with all that it leads to: representations of products become
  /// placeholders, with their contexts, where they are not the file's own. Warns where parts of
  /// another product's shape come along.
  void bring(Index record, FileId file);

  /// Gives `file`'s placeholders one of their placements each, where none stands there yet.
  void give_placements(FileId file, std::span<const Index> placeholders);

  bool is_repeated(Index record) const { return instances.type(record) == TypeTable::REPEATED; }
  bool collects(Index record) const { return instances.types().collects(instances.type(record)); }
  /// A representation that stands in `file` as a placeholder, or would.
  bool is_placeholder(Index record, FileId file) const {
    if (!classes.has(record, SHOWING)) return false;
    const Stand* const stand = stands.find(record, file);
    return stand == nullptr || stand->role() == Role::stand_in;
  }
  /// Whether it is of some product's shape: other than definitions, contexts, and what places it.
  bool is_shape(Index record) const {
    return classes.has(record, OWNED) &&
           !classes.has(record, SOFT | IDENTITY | DEFINING | SHOWING) &&
           !is_plain_geometry(instances, record);
  }
  /// Whether bodies of one product stand in files of their own.
  bool has_bodies_apart() const {
    return std::any_of(placement.files.begin(), placement.files.end(),
                       [](const PlacedFile& file) { return file.body != NO_RECORD; });
  }
  /// Whether nothing of other products may come into `file`.
  bool keeps_others_out(FileId file) const { return placement.keeps_others_out && file != 0; }
  /// Whether `record` can be entered into `file` without anything of other products.
  bool closes_in(Index record, FileId file) const;
  bool has_components(FileId file) const {
    return file == 0 || !placement.files[file].links.empty();
  }

  const Instances& instances;
  const Products& products;
  Placement& placement;
  FileSets& stands;
  Classes classes;
  /// What products own whole is dealt with when files are filled: all that it refers to is owned or
  /// soft. Finds `others`.
  void find_others();

  /// All records that no product owns whole, ascending; while files are filled it is empty.
  std::vector<Index> others;
  /// The placeholders that bring() made since this was emptied last.
  std::vector<Index> placeholders;

 private:
  void make_placeholder(Index representation, FileId file);

  std::vector<Index> open_;
};

/// Enters what products own, usages, and placeholders of components.
void fill_files(Placing& placing);

/// A style that stands in a file because another one overrides it there.
struct OverriddenStyle {
  Index styled;
  FileId file;
};

/// Enters styles that single occurrences of a component have into the assembly's file: those by
/// context (PRESENTATION_STYLE_BY_CONTEXT with a representation that names the occurrence, ISO
/// 10303-46), and those of a whole component that name what places it
/// (CONTEXT_DEPENDENT_OVER_RIDING_STYLED_ITEM). A style of a component's only occurrence stands
/// with the component; so do those of its items that name what places it, or have an assembly's
/// representation for a context. An item that is styled stands in the assembly's file as a
/// stand-in, which refers to nothing. Warns of styles that readers cannot know the occurrence or
/// the item of then.
std::vector<OverriddenStyle> place_occurrence_styles(Placing& placing);

/// Enters the styles that those override, when all styles stand somewhere.
void bring_overridden(Placing& placing, std::vector<OverriddenStyle> open);

/// Enters what leads to records that stand in files, and finds out what is bound.
void hang_on(Placing& placing);

/// Enters what leads to nothing owned and nobody refers to.
void place_free_records(Placing& placing);

/// Warns of what readers do not show, since they do not follow it into another file.
void warn_of_unfollowed(Placing& placing);

/// Enters all that stands nowhere yet, then every item that no list of its collector has.
void place_left_overs(Placing& placing);

}  // namespace Kessel
