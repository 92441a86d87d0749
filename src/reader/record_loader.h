// Turns record texts into records of the store.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/reader.h"
#include "model/store.h"
#include "reader/classification.h"

namespace Kessel {

/// The type keyword of `record` (`PRODUCT` in `#5 = PRODUCT('x')`), or the whole inner text of a
/// complex instance (`A() B()` in `#10 = ( A() B() )`); `from` is the position behind the record's
/// own number. A view into `record`, empty when there is none.
std::string_view record_type(std::size_t from, std::string_view record);

/// The text between the first two apostrophes of `record`: all of it without an apostrophe, the
/// rest behind the only one. A doubled apostrophe inside the string ends it.
std::string_view first_string(std::string_view record);

/// The body of the first string literal of `record` (ISO 10303-21, 6.4.3) with its directives and
/// doubled apostrophes; empty when there is none. Unlike `first_string`, whose results others
/// depend on, it knows which apostrophes do not end a string.
std::string_view whole_first_string(std::string_view record);

/// Fills one store from record texts. Holds scratch memory only; the store must outlive it.
class RecordLoader {
 public:
  /// For a store that may take `memory_limit` bytes.
  explicit RecordLoader(Store& store, std::uint64_t memory_limit = Options::NO_LIMIT);

  /// Adds one record as RecordCutter gives it. Drops, without a word, what has no number from 1 to
  /// 4,294,967,295 or no type. References are collected up to the first that is not such a number.
  /// Throws InputError, which tells `offset` as the record's place, where the store would need more
  /// memory than it may take.
  void add(std::string_view record, std::uint64_t offset = 0);

  /// Adds one record of a standard reading. Its number is from 1 to 4,294,967,295; references that
  /// are not lead nowhere and are passed over.
  void add(const Exchange::Record& record);

  /// Counts so many bytes, held elsewhere for what was added, for the memory limit.
  void count_beside(std::uint64_t bytes) { beside_ = bytes; }

  /// Makes room in the store for all that records of a standard reading refer to, so that what is
  /// beyond the last record is missing like any other. Throws as add() does.
  void make_room_for_references();

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
  void add_unusual(const Exchange::Record& record);
  void load(const Exchange::Record& record, std::string_view text, std::size_t equals);
  Entity& enter(unsigned id, std::string_view name, std::string_view record, std::size_t references,
                std::uint32_t keyword_id = Exchange::Record::NO_KEYWORD);
  void put_references(Entity& entity, std::span<const Exchange::Mention> mentions);

  // What the tables take for each element beside its text, with what the heap adds, roughly.
  static constexpr std::uint64_t BYTES_OF_A_NAME = 96;
  static constexpr std::uint64_t BYTES_OF_A_TYPE = 192;

  const Type& type_of(std::string_view name);
  const Type& type_of(std::string_view name, std::uint32_t keyword_id);
  Type look_up(std::string_view name);
  Entity* create_record_entity(unsigned id, const Type& type, std::string_view record);
  Entity* create_typed_entity(unsigned id, const Type& type, std::string_view record);
  void keep_name(unsigned id, std::string_view type, std::string_view record);
  void require_memory_for(unsigned id, std::size_t numbers);

  Store& store_;
  std::uint64_t memory_limit_;
  unsigned largest_reference_ = 0;  // in records of a standard reading
  std::uint64_t offset_ = 0;        // Where the record stands that is added.
  std::uint64_t kept_bytes_ = 0;    // What is kept elsewhere than in the arena and the slots.
  std::uint64_t beside_ = 0;        // What others hold.
  // Where the sum for the memory limit was made last, and how many numbers it leaves room for.
  std::size_t summed_page_ = 0;
  std::uint64_t summed_beside_slots_ = 0;
  std::uint64_t most_numbers_ = 0;
  std::vector<unsigned> numbers_;  // Scratch: the record's own number, then its references.

  // Fast path for the few hundred keywords that a file uses over and over: a hash table that is
  // consulted before the tables of names. Full of names, it stops learning.
  static constexpr std::size_t CACHE_SIZE = 2048;
  static constexpr std::size_t MAX_CACHED_LENGTH = 64;
  std::vector<Type> cache_;
  Type uncached_;
  std::vector<const Type*> by_keyword_;  // by Record::keyword_id, of those in the cache
  std::size_t cached_ = 0;
  std::vector<std::string> untyped_names_;
};

}  // namespace Kessel
