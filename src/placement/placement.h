// Which record stands in which file of a split.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "instances/instances.h"
#include "kessel/options.h"
#include "placement/file_sets.h"
#include "products/products.h"

namespace Kessel {

// What holds for the placement of every legal input; where two of these are in conflict, the first
// one wins.
//
// 1. Closed. A record that stands in a file has every reference there that it has in the input,
//    except that a collector (instances/collectors.h) keeps of its list those items that stand in
//    the file. No list becomes empty. Stand-ins are the only exception: placeholders refer to those
//    of the placements that stand in the file, and to the context; what stands for an item of a
//    component's shape that the assembly gives a style to refers to nothing.
// 2. Nothing lost. Every record stands whole in at least one file, and every item of a collector's
//    list stands together with the collector in at least one file. What belongs to no product
//    stands in the root's file; what speaks of one product alone, or of its usages, in its file.
// 3. Nothing leaked, nothing doubled. What a product's definition, shape and representations lead
//    to is its own, and stands in its file; what several products lead to, in each of theirs. No
//    file holds another product's body, unless one of its records cannot be closed without it: an
//    overriding style or an annotation that an assembly gives to a component's face. Each such
//    record is warned of. A style that names the occurrence that it is for brings none.
// 4. Own bodies, no empty files. Lean has one file for the root and one for each part; what
//    assemblies have of their own, bodies included, stands in the root's. Nested has a file for
//    each product. But what no usage uses and another product shows by a mapped item has no file of
//    its own: it is a piece of the shape of all that show it, and stands with them. Their mapped
//    items cannot be closed without its body (3), no usage gives it a place in the structure (5),
//    and what refers to a file shows an empty placeholder, which those items would show then.
// 5. Only products have files (products/products.h).
// 6. Links. A file refers to the file of every component that it shows and that has a file of its
//    own; the component's representation stands there as a placeholder.
// 7. Refused is nothing. A usage that closes a circle stands in the root's file, without a link;
//    several tops are held together by a root that no product has; whatever cannot be placed by a
//    product goes to the assembly that needs the least added to hold it whole.
//
// An extraction is another way to share: what is asked for stands in files of its own, everything
// else in the first, which nobody writes. What else differs: no reference to the first file is
// made, for nothing below a product stands there, and where 2 is in conflict with 3, it is the
// first file that holds parts of others' shapes.
//
// How a place is found:
// - Contexts and units come with whoever needs them, and attract nothing.
// - A file holds what its products own, their usages with shapes and transformations, and of each
//   component outside the file the definition, the shape, and the representation as a placeholder.
// - What speaks of a component below an assembly, at whatever level, stands with the assembly.
// - A style of one occurrence stands with the assembly, unless it is the component's only one. One
//   of an item that says where that is placed, or in which assembly it is seen, stands with the
//   item: no reader finds that elsewhere. So does the other end of the place then, as a
//   placeholder.
// - What leads to such records stands where all of them stand and one is the file's own; of a
//   collector's items one is enough.
// - What leads to none (a colour, a person) comes with those that refer to it. If nobody does, it
//   stands with one of its items, or else with the rarest of what it speaks of and others do, too.

/// A file of a split.
struct PlacedFile {
  /// The products whose own records stand in it; none for a root that only holds tops together.
  std::vector<ProductId> products;
  /// The product that it is named after: the top of what stands in it; NO_PRODUCT for a root that
  /// holds several tops together.
  ProductId top = NO_PRODUCT;
  /// The components whose files it refers to, in order of their first usage.
  std::vector<ProductId> links;
  /// The one body of its only product that stands in it, without components; NO_RECORD for all.
  Index body = NO_RECORD;
};

/// Which products share a file.
struct FilePlan {
  std::vector<PlacedFile> files;  ///< the root's first, the others by product
  std::vector<FileId> file_of;    ///< by product: where its own records stand
  /// Whether all files but the first hold nothing of products that are not theirs: a record that
  /// cannot be closed without those stands in the first.
  bool keeps_others_out = false;
};

/// The files of a split. `style` is lean or nested.
FilePlan plan_split(const Products& products, AssemblyStyle style);

/// A file of the product `part` and all below it, the last, and in front of it one of all others.
/// The only top has all there is: there is no other file then.
FilePlan plan_extraction(const Products& products, ProductId part);

/// A file for each of `bodies` (placement/bodies.h), which are those of the product `part`, behind
/// one of all else.
FilePlan plan_bodies(const Products& products, ProductId part, std::span<const Index> bodies);

/// Something about a placement that deserves a look.
struct PlacementWarning {
  enum class Kind : std::uint8_t {
    closes_circle,  ///< a usage whose component leads back to its assembly
    foreign_shape,  ///< stands in a file with parts of another product's shape
    /// a style of one occurrence that stands with the assembly, where readers cannot know what of
    /// the component's shape has it, or with the component, where they cannot know which
    occurrence_style,
    /// shows a component whose file readers look up for usages alone
    shown_besides,
    /// a definition of a type that many readers do not know, so that they miss its file
    unusual_definition,
  };
  Kind kind;
  Index record;
  FileId file = 0;  ///< in which that is so
};

struct Placement : FilePlan {
  FileSets stands{0};
  std::vector<PlacementWarning> warnings;
};

/// Places the records. Linear in the input and the outputs.
Placement place_records(const Instances& instances, const Products& products, FilePlan plan);
inline Placement place_records(const Instances& instances, const Products& products,
                               AssemblyStyle style) {
  return place_records(instances, products, plan_split(products, style));
}

}  // namespace Kessel
