// Turns record texts into records of the store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kessel/file.h"
#include "reader/classification.h"

namespace Kessel {

/// The type keyword of `record` (`PRODUCT` in `#5 = PRODUCT('x')`), or the whole inner text of a
/// complex instance (`A() B()` in `#10 = ( A() B() )`); `from` is the position behind the record's
/// own number. A view into `record`, empty when there is none.
std::string_view record_type(std::size_t from, std::string_view record);

/// The text between the first two apostrophes of `record`: all of it without an apostrophe, the
/// rest behind the only one. A doubled apostrophe inside the string ends it.
std::string_view first_string(std::string_view record);

/// Fills one store from record texts. Holds scratch memory only; the store must outlive it.
class RecordLoader {
 public:
  explicit RecordLoader(File& file);

  /// Adds one record as RecordCutter gives it. Drops, without a word, what has no number from 1 to
  /// 4,294,967,295 or no type. References are collected up to the first that is not such a number.
  void add(std::string_view record);

 private:
  /// The first and last eight bytes of a name, which is all of it up to sixteen. Together with the
  /// length they tell nearly all keywords apart.
  struct Ends {
    explicit Ends(std::string_view name);
    Ends() = default;
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    bool operator==(const Ends&) const = default;
  };
  /// What is known of a type name: what to keep, and where the store lists it.
  struct Type {
    std::string_view name;  // The store's copy, or ours for types that are not kept.
    Keep keep = Keep::nothing;
    std::vector<unsigned>* ids = nullptr;
    Ends ends = {};
  };

  const Type& type_of(std::string_view name);
  Type look_up(std::string_view name);
  Entity* create(unsigned id, const Type& type, std::string_view record);

  File& file_;
  std::vector<unsigned> numbers_;  // The record's own number, then its references.

  // Fast path for the few hundred keywords that a file uses over and over: a hash table that is
  // consulted before the tables of names. Full of names, it stops learning.
  static constexpr std::size_t CACHE_SIZE = 2048;
  static constexpr std::size_t MAX_CACHED_LENGTH = 64;
  std::vector<Type> cache_;
  Type uncached_;
  std::size_t cached_ = 0;
  std::vector<std::string> untyped_names_;
};

}  // namespace Kessel
