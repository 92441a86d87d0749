// The records of one exchange file, as plain data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "instances/column.h"
#include "instances/number_index.h"
#include "instances/type_table.h"

namespace Kessel {

/// A record's reference to another, in one word.
class Reference {
 public:
  Reference() = default;
  Reference(Index record, bool is_listed) : bits_(record | (is_listed ? LISTED : 0)) {}

  /// The record referred to; NO_RECORD where the file has none with that number.
  Index record() const { return bits_ & ~LISTED; }
  /// Whether it stands in the list of a collector (see instances/collectors.h).
  bool is_listed() const { return (bits_ & LISTED) != 0; }

  /// While a file is read: the number, until it is known which record has it.
  static Reference unresolved(std::uint32_t number) {
    Reference reference;
    reference.bits_ = number;
    return reference;
  }
  std::uint32_t number() const { return bits_; }

 private:
  static constexpr std::uint32_t LISTED = 0x8000'0000;
  std::uint32_t bits_ = NO_RECORD;
};

/// The records of one file in the order of the file, what they refer to, and the texts of those
/// that carry the product structure. A line of an anchor or reference section is a record, too, of
/// a type of its own: an anchor has no number and refers to its instance.
///
/// Filled by an InstanceLoader or an InstanceBuilder, read-only afterwards but for make_one(),
/// drop() and keep_instead(). About 25 bytes a record.
class Instances {
 public:
  /// How many there are; indices run from 0.
  Index size() const { return static_cast<Index>(types_.size()); }

  TypeId type(Index record) const { return types_[record]; }
  /// The types of all records.
  std::span<const TypeId> record_types() const { return types_.part(0, types_.size()); }
  const TypeTable& types() const { return type_table_; }
  bool is(Index record, std::string_view keyword) const {
    return type_table_.has(types_[record], keyword);
  }

  /// The instance number that it has in the file; 0 for an anchor.
  std::uint64_t number(Index record) const;
  /// The record with that number; NO_RECORD for none.
  Index find(std::uint64_t number) const { return index_.find(number); }

  /// What it refers to, in order of appearance, repeats kept.
  [[gnu::always_inline]] std::span<const Reference> references(Index record) const {
    const std::uint64_t first = block_references_[record / BLOCK] + first_references_[record];
    return {references_.begin() + first, end_of_references(record)};
  }
  /// Their end, where those of the next record begin.
  [[gnu::always_inline]] const Reference* end_of_references(Index record) const {
    if (record + 1 == size()) return references_.end();
    return references_.begin() + block_references_[(record + 1) / BLOCK] +
           first_references_[record + 1];
  }
  std::uint64_t reference_count() const { return references_.size(); }
  /// How many of all references lead to no record; those of repeated records are not counted.
  std::uint64_t missing_references() const { return missing_references_; }

  /// The body of a record whose text is kept (Exchange::Record::body); empty for all others.
  std::string_view kept_body(Index record) const;
  /// The records whose text is kept, ascending.
  const std::vector<Index>& kept() const { return kept_; }
  /// Those of them that have `keyword`, ascending.
  std::vector<Index> kept_with(std::string_view keyword) const;

  /// A record from which others near it can be read again: its index and its offset.
  struct Place {
    Index record = 0;
    std::uint64_t offset = 0;
  };
  /// The nearest such place at or in front of `record`.
  Place place_near(Index record) const {
    return {record / BLOCK * BLOCK, block_offsets_[record / BLOCK]};
  }
  /// The section that the record stands in.
  Exchange::Section section(Index record) const;

  /// Where a section begins that is not the header: its first record, or that of the next section
  /// where it has none.
  struct SectionBegin {
    Index first = 0;
    Exchange::Section section = Exchange::Section::data;
  };
  std::span<const SectionBegin> sections() const { return sections_.part(0, sections_.size()); }

  /// The entities of the header section, each without its ";", as they stand.
  const std::vector<std::string>& header() const { return header_; }

  struct DataSection {
    Index first = 0;         ///< its first record
    std::string parameters;  ///< behind DATA, with parentheses; empty for none
  };
  const std::vector<DataSection>& data_sections() const { return data_sections_; }

  /// Makes records one: each for which `first`, by record, has another becomes a repeated one of
  /// that (TypeTable::REPEATED). References to it, and its number, lead there from now on. Those in
  /// `first` stand for themselves.
  void make_one(const Column<Index>& first);
  /// Makes `record`, to which nothing that stays refers, one that says nothing, as a repeated one.
  void drop(Index record);

  /// Gives a record whose text is kept another one; what it refers to stays.
  void keep_instead(Index record, std::string body);

  /// Bytes that all this takes.
  std::uint64_t bytes() const;

 private:
  friend class InstanceLoader;
  friend class InstanceBuilder;
  static constexpr Index BLOCK = 64;

  /// Keeps the text of the last record.
  void keep(Index record, std::string body);

  TypeTable type_table_;
  Column<TypeId> types_;
  Column<std::uint32_t> numbers_;  // or LARGE_NUMBER
  struct LargeNumber {
    Index record = 0;
    std::uint64_t number = 0;
  };
  Column<LargeNumber> large_numbers_;
  Column<std::uint32_t> first_references_;  // counted from that of the block
  Column<std::uint64_t> block_references_;
  Column<std::uint64_t> block_offsets_;
  Column<Reference> references_;
  std::uint64_t missing_references_ = 0;
  NumberIndex index_;
  std::vector<Index> kept_;
  std::vector<std::string_view> kept_bodies_;
  std::deque<std::string> kept_texts_;
  std::uint64_t kept_bytes_ = 0;
  std::vector<std::string> header_;
  std::vector<DataSection> data_sections_;
  Column<SectionBegin> sections_;  // all but the header
  std::uint64_t frame_bytes_ = 0;  // what the header and the sections' parameters take
  static constexpr std::uint32_t LARGE_NUMBER = 0xFFFF'FFFF;
};

}  // namespace Kessel
