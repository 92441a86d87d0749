// The types of the records of a file.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "exchange/reader.h"

namespace Kessel {

using TypeId = std::uint32_t;

/// Numbers the types of one file's records in the order in which they are first met. The type of a
/// complex instance is the sequence of its keywords, without their parameters.
class TypeTable {
 public:
  TypeTable();

  /// The type of `record`, entered if it is new. All records with an id of their keyword are from
  /// one reading.
  TypeId type_of(const Exchange::Record& record) {
    const std::uint32_t id = record.keyword_id;
    return id < by_keyword_.size() && by_keyword_[id] != 0 ? by_keyword_[id] : look_up(record);
  }

  /// The same for a type of another table.
  TypeId type_like(const TypeTable& other, TypeId type) {
    return enter(other.types_[type].name, other.types_[type].is_complex);
  }

  std::size_t size() const { return types_.size(); }
  /// "PRODUCT"; of complex instances the keywords with a blank between them.
  std::string_view name(TypeId type) const { return types_[type].name; }
  const std::vector<std::string_view>& keywords(TypeId type) const { return types_[type].keywords; }
  bool is_complex(TypeId type) const { return types_[type].is_complex; }
  /// Whether `keyword` is the type, or one of a complex instance's.
  bool has(TypeId type, std::string_view keyword) const;
  /// Whether a keyword of the type is a collector's.
  bool collects(TypeId type) const { return types_[type].collects; }

  std::uint64_t bytes() const { return bytes_; }

  // What stands in a line of its own section (ISO 10303-21, 10 and 11).
  static constexpr TypeId ANCHOR_ENTRY = 0;
  static constexpr TypeId REFERENCE_ENTRY = 1;
  /// A second record under a number whose first one says the same; it refers to nothing.
  static constexpr TypeId REPEATED = 2;
  /// From here on they are types of records.
  static constexpr TypeId FIRST_OF_RECORDS = 3;

 private:
  struct Type {
    std::string name;
    std::vector<std::string_view> keywords;  // views into `name`
    bool is_complex = false;
    bool collects = false;
  };
  TypeId look_up(const Exchange::Record& record);
  TypeId type_of_complex(std::string_view body);
  TypeId enter(std::string_view name, bool is_complex);
  /// The same for what stands in `key_`.
  TypeId enter_key();

  /// What a complex type's key has in front of its name, and no other.
  static constexpr char COMPLEX = '(';

  std::deque<Type> types_;
  std::unordered_map<std::string_view, TypeId> ids_;  // keys are names
  std::deque<std::string> keys_;
  std::string key_;  // scratch
  std::uint64_t bytes_ = 0;
  std::vector<TypeId> by_keyword_;  // by Record::keyword_id; 0 where it is not known yet
};

}  // namespace Kessel
