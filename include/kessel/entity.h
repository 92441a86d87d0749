// The records of one input file in memory: one object per instance `#n = ...;`.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/export.h"
#include "kessel/number_map.h"
#include "kessel/reference_list.h"

namespace Kessel {

class Part;
struct Store;

/// For each part whose file holds an instance, the number that the instance has in that file.
/// Iterates in the order of the file's list of parts, a generated root last.
using PartNumbers = NumberMap<Part>;

/// One instance of the data section (ISO 10303-21, 11): what it refers to and which parts hold it.
///
/// A record stores no number of its own: its number is the index of its slot in the store.
/// Not safe for concurrent use.
class KESSEL_EXPORT Entity {
 public:
  /// A record without references that no part holds.
  Entity();
  /// Takes over the references and part numbers of `other`, which is left with none and can be
  /// used like a new record.
  Entity(Entity&& other);
  Entity(const Entity&) = delete;
  Entity& operator=(const Entity&) = delete;
  Entity& operator=(Entity&&) = delete;
  /// Frees the whole object when it is deleted through an `Entity*`.
  virtual ~Entity();

  /// The entity type name (keyword, or the whole inner text of a complex instance). The characters
  /// belong to the store; where none was kept, a view of one static empty string.
  virtual std::string_view type() const;
  /// The text that was kept of the record's first string, as it stands in the file; for all but
  /// `EntityWithAttr` a view of the same static empty string. Valid as long as the record.
  virtual std::string_view attribute() const;

  /// Appends the instance number `id` to the references; duplicates and 0 are not refused.
  void add_reference(unsigned id);

  /// The `i`-th reference, counted from 0. For an index that does not exist, negative ones
  /// included, prints one line on standard error and returns 0, which is never an instance.
  unsigned get_reference(int i) const;

  /// All references, in order of appearance, duplicates kept. The vector lives as long as the
  /// record and changes with it; a record read from a file builds it at the first call.
  const std::vector<unsigned>& get_references() const;

  /// Whether the record refers to anything.
  bool refer_any() const;

  /// Releases spare capacity of the references; without references nothing stays allocated.
  void shrink_to_fit();

  /// All references without building a vector. Valid until the record is changed or destroyed.
  std::span<const std::uint32_t> references() const { return references_.numbers(); }

  /// The parts that hold this instance, with its number in each.
  PartNumbers part_numbers;

 private:
  friend struct Store;  // packs the references of what it reads
  ReferenceList references_;
};

/// A record that also keeps its entity type name.
class KESSEL_EXPORT EntityWithType : public Entity {
 public:
  /// `type` is kept as a view and must outlive the record (the store's type names do).
  explicit EntityWithType(std::string_view type);
  /// Takes over the record in `other` together with its type name, which `other` keeps as well.
  explicit EntityWithType(Entity&& other);
  EntityWithType(EntityWithType&& other);
  ~EntityWithType() override;

  std::string_view type() const override;

 private:
  std::string_view type_;
};

/// A record that also keeps one attribute text.
class KESSEL_EXPORT EntityWithAttr : public EntityWithType {
 public:
  /// `type` is kept as a view, `attribute` (an exchange-string body) is copied.
  EntityWithAttr(std::string_view type, std::string_view attribute);
  /// Takes over the record in `other`, its type name and a copy of its attribute, both of which
  /// `other` keeps as well.
  explicit EntityWithAttr(Entity&& other);
  EntityWithAttr(EntityWithAttr&& other);
  ~EntityWithAttr() override;

  std::string_view attribute() const override;

 private:
  std::string attribute_;
};

}  // namespace Kessel
