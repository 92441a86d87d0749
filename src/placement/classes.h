// What kinds of records there are for the placement.
#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "instances/column.h"
#include "instances/instances.h"
#include "placement/types_in.h"
#include "products/products.h"

namespace Kessel {

/// What is known about a record, as bits.
enum Trait : std::uint8_t {
  /// A context or unit, or the name of an occurrence: comes along, and attracts nothing.
  SOFT = 1,
  /// A product leads to it.
  OWNED = 2,
  /// A usage, or what says its shape and place.
  USED = 4,
  /// A product's definition, shape, or what links these to representations.
  DEFINING = 8,
  /// A product's representation.
  SHOWING = 16,
  /// Leads, not only through soft records, to something owned or used.
  BOUND = 32,
  /// Somebody who is not soft refers to it. Known of records that are not bound.
  NEEDED = 64,
  /// Its definition leads to it, rather than its shape.
  IDENTITY = 128,
};

/// Whether `record` is a point, a direction or a placement (ISO 10303-42). Many products share
/// them.
bool is_plain_geometry(const Instances& instances, Index record);

/// The types of geometry that is made of such, or of topology at a point. Who uses a point of
/// another's shape does not speak of that shape.
TypeSet made_of_plain_geometry(const TypeTable& types);

/// The traits of all records, and who owns representations.
class Classes {
 public:
  Classes(const Instances& instances, const Products& products);

  bool has(Index record, unsigned traits) const { return (traits_[record] & traits) != 0; }
  /// Whether somebody owns it for its own sake.
  bool is_firmly_owned(Index record) const { return (traits_[record] & (OWNED | SOFT)) == OWNED; }
  void give(Index record, unsigned traits) {
    traits_[record] = static_cast<std::uint8_t>(traits_[record] | traits);
  }
  /// Not bound, not soft.
  bool is_free(Index record) const { return !has(record, SOFT | OWNED | USED | BOUND); }

  /// The products that a representation belongs to, ascending.
  std::span<const ProductId> owners(Index representation) const;

 private:
  void find_soft(const Instances& instances);
  void give_used(const Usage& usage);
  void find_occurrence_names(const Instances& instances, const Usage& usage);

  Column<std::uint8_t> traits_;
  std::unordered_map<Index, std::vector<ProductId>> owners_;
};

}  // namespace Kessel
