// What the text of one record says, without what it refers to.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "instances/type_table.h"

namespace Kessel::Sameness {

/// The hash of the words of `body` (Exchange::Record::body) by what they say: numbers by their
/// values, strings decoded, the rest as it stands. Every instance name counts as one and the same
/// word. Blanks and comments do not matter, nor do the number, the order and the names of the
/// instances in `sets`, which are lists in `body`, with their parentheses.
std::uint64_t text_hash(std::string_view body, std::span<const std::string_view> sets = {});

/// Takes text_hash() of records: the lists of collectors are sets.
class RecordHash {
 public:
  /// Of records whose types are in `types`, which must outlive it and may grow.
  explicit RecordHash(const TypeTable& types) : types_(types) {}

  /// Of one of the type `type` with that body (Exchange::Record::body).
  std::uint64_t of(TypeId type, std::string_view body);

 private:
  struct OfType {
    bool is_known = false;
    bool collects = false;
    std::string_view keyword = {};  // of the table; empty for complex instances
    std::uint64_t hash = 0;         // of that
  };
  OfType of_type(TypeId type) const;

  const TypeTable& types_;
  std::vector<OfType> known_;  // by type
};

/// The hash of a number (ISO 10303-21, 6.4.1 and 6.4.2) by its exact decimal value; of text that is
/// no number, by the text. `1.`, `1.0` and `10.E-1` are one value, `-0.` and `0.` another.
std::uint64_t number_hash(std::string_view literal);

}  // namespace Kessel::Sameness
