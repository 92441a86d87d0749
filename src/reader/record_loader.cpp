// Turns record texts into records of the store.
#include "reader/record_loader.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstring>
#include <optional>
#include <span>
#include <tuple>

#include "exchange/comments.h"
#include "exchange/literals.h"
#include "findings/refusals.h"
#include "model/store.h"
#include "reader/references.h"
#include "reader/text.h"

namespace Kessel {

namespace {

/// The first "(" in [p, end), or `end`.
[[gnu::always_inline]] inline const char* find_opening(const char* p, const char* end) {
#if defined(__SSE2__)
  // Fast path: nearly every keyword ends among the first bytes, which are looked at sixteen at
  // once.
  for (; end - p >= 16; p += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const int found = _mm_movemask_epi8(_mm_cmpeq_epi8(block, _mm_set1_epi8('(')));
    if (found != 0) return p + std::countr_zero(static_cast<unsigned>(found));
  }
#endif
  const void* const found = std::memchr(p, '(', static_cast<std::size_t>(end - p));
  return found == nullptr ? end : static_cast<const char*>(found);
}

/// record_type() for nearly every record: `from` is followed by " = " or "=", by letters, and by
/// "(" or " (". No value for any other.
inline std::optional<std::string_view> usual_type(std::size_t from, std::string_view record) {
  const char* begin = record.data() + from;
  const char* const end = record.data() + record.size();
  if (end - begin < 4) return std::nullopt;
  if (*begin == ' ') ++begin;
  if (*begin != '=') return std::nullopt;
  ++begin;
  if (*begin == ' ') ++begin;
  if (*begin < 'A') return std::nullopt;  // No white space, and no "(".
  const char* open = find_opening(begin, end);
  if (open == end) return std::nullopt;
  if (open[-1] == ' ') --open;
  if (is_space(open[-1])) return std::nullopt;
  return std::string_view(begin, static_cast<std::size_t>(open - begin));
}

}  // namespace

std::string_view record_type(std::size_t from, std::string_view record) {
  const char* const record_end = record.data() + record.size();
  const char* begin = record.data() + from;
  while (begin != record_end && *begin != '=') ++begin;
  if (begin == record_end) return {};
  do {
    if (++begin == record_end) return {};
  } while (is_space(*begin));
  const char* end = find_opening(begin, record_end);
  if (end == record_end) return {};
  if (end == begin) {  // A complex instance: all that its parentheses hold.
    ++begin;
    while (begin != record_end && is_space(*begin)) ++begin;
    const std::size_t last = record.rfind(')');
    if (last == std::string_view::npos) return {};
    end = record.data() + last;
    if (end < begin) return {};
  }
  while (end > begin && is_space(end[-1])) --end;
  return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view first_string(std::string_view record) {
  const std::size_t begin = record.find('\'') + 1;  // 0 where there is none.
  return record.substr(begin, record.find('\'', begin) - begin);
}

std::string_view whole_first_string(std::string_view record) {
  const std::size_t begin = record.find('\'');
  if (begin == std::string_view::npos) return {};
  const std::size_t behind = Exchange::behind_string(record, begin);
  if (behind == std::string_view::npos) return record.substr(begin + 1);
  return record.substr(begin + 1, behind - begin - 2);
}

inline RecordLoader::Ends::Ends(std::string_view name) {
  const char* const end = name.data() + name.size();
  head = load_word(name.data(), end);
  if (name.size() > 8) tail = load_word(end - 8, end);
}

RecordLoader::RecordLoader(Store& store, std::uint64_t memory_limit)
    : store_(store), memory_limit_(memory_limit), cache_(CACHE_SIZE) {
  untyped_names_.reserve(CACHE_SIZE);  // Never grows beyond: views into it stay valid.
}

void RecordLoader::add(std::string_view record, std::uint64_t offset) {
  offset_ = offset;
  // Room for a text that is nothing but references, so that none of them needs a check.
  if (numbers_.size() <= record.size() / 2) numbers_.resize(record.size() / 2 + 1);
  unsigned* const first = numbers_.data();
  unsigned* last = first;
  const char* own_end = nullptr;
  for_each_reference(record, [&](std::uint32_t number, const char*, const char* end) {
    if (last == first) own_end = end;
    *last++ = number;
  });
  if (last == first) return;
  const auto behind_own = static_cast<std::size_t>(own_end - record.data());
  const std::optional<std::string_view> usual = usual_type(behind_own, record);
  const std::string_view name = usual ? *usual : record_type(behind_own, record);
  if (name.empty()) return;

  const auto references = static_cast<std::size_t>(last - first) - 1;
  Entity& entity = enter(*first, name, record, references);
  store_.put_references(entity, references, [&](std::uint32_t* out) {
    for (const unsigned* from = first + 1; from != last; ++from)
      *out++ = *from;  // Nearly always few.
    return out;
  });
}

void RecordLoader::add(const Exchange::Record& record) {
  offset_ = record.offset;
  if (!record.is_plain || !record.is_usual) return add_unusual(record);
  Entity& entity = enter(static_cast<unsigned>(record.number), record.keyword, record.text,
                         record.mentions.size(), record.keyword_id);
  put_references(entity, record.mentions);
}

inline void RecordLoader::put_references(Entity& entity,
                                         std::span<const Exchange::Mention> mentions) {
  store_.put_references(entity, mentions.size(), [&](std::uint32_t* out) {
    for (const Exchange::Mention& mention : mentions) {
      if (mention.number == 0 || mention.number > UINT32_MAX) continue;
      *out = static_cast<std::uint32_t>(mention.number);
      largest_reference_ = std::max(largest_reference_, *out++);
    }
    return out;
  });
}

/// Adds a record by what there is of its text for those who know no comments.
void RecordLoader::add_unusual(const Exchange::Record& record) {
  const std::size_t equals = record.text.rfind('=', record.text.size() - record.body.size());
  const bool has_remarks = record.has_backslash && Exchange::has_comments(record.text);
  if (record.is_plain && !has_remarks && equals != std::string_view::npos) {
    load(record, record.text, equals);
  } else {
    load(record, "=" + Exchange::without_comments(record.body), 0);
  }
}

void RecordLoader::make_room_for_references() {
  if (memory_limit_ != Options::NO_LIMIT) require_memory_for(largest_reference_, 0);
  store_.make_room(largest_reference_);
}

/// Enters `record` by `text`, what there is of it for those who know no comments; its type stands
/// behind `equals`.
void RecordLoader::load(const Exchange::Record& record, std::string_view text, std::size_t equals) {
  const auto id = static_cast<unsigned>(record.number);
  const std::string_view name = record_type(equals, text);
  if (!name.empty()) {
    put_references(enter(id, name, text, record.mentions.size()), record.mentions);
    return;
  }
  // Nothing leads on from it, but its number is taken: another record under it is one too many.
  if (memory_limit_ != Options::NO_LIMIT) require_memory_for(id, 1);
  store_.make_room(id);
  store_.put<Entity>(id);
}

/// Enters a record with the type `name`, which is in its text `record`, and as yet without its
/// references, of which there are so many at most.
[[gnu::always_inline]] inline Entity& RecordLoader::enter(unsigned id, std::string_view name,
                                                          std::string_view record,
                                                          std::size_t references,
                                                          std::uint32_t keyword_id) {
  if (memory_limit_ != Options::NO_LIMIT) require_memory_for(id, references + 1);
  store_.make_room(id);
  if (store_.name_style != NameStyle::record) keep_name(id, name, record);
  const Type& type = type_of(name, keyword_id);
  return *create_record_entity(id, type, record);
}

/// Throws InputError where what is kept would need more memory than it may take with a record `id`
/// whose list of references has so many numbers, its length included. The record's texts are
/// counted when they are kept.
void RecordLoader::require_memory_for(unsigned id, std::size_t numbers) {
  const std::uint64_t beside_slots = store_.arena.bytes() + kept_bytes_ + beside_;
  const std::size_t page = id / PagedArray<Entity*>::PAGE_SIZE;
  // Most records change nothing about the sum.
  if (page == summed_page_ && beside_slots == summed_beside_slots_ && numbers <= most_numbers_) {
    return;
  }
  const std::uint64_t without_numbers = store_.entities.bytes_with(id) + beside_slots;
  const std::uint64_t needed = without_numbers + numbers * sizeof(unsigned);
  if (needed > memory_limit_) throw InputError(too_much_memory(needed, memory_limit_, id, offset_));
  summed_page_ = page;
  summed_beside_slots_ = beside_slots;
  most_numbers_ = (memory_limit_ - without_numbers) / sizeof(unsigned);
}

[[gnu::always_inline]] inline Entity* RecordLoader::create_record_entity(unsigned id,
                                                                         const Type& type,
                                                                         std::string_view record) {
  if (type.keep == Keep::nothing) return store_.put<Entity>(id);  // Fast path: so do nearly all.
  return create_typed_entity(id, type, record);
}

[[gnu::noinline]] Entity* RecordLoader::create_typed_entity(unsigned id, const Type& type,
                                                            std::string_view record) {
  const std::size_t room = type.ids->capacity();
  type.ids->push_back(id);
  kept_bytes_ += (type.ids->capacity() - room) * sizeof(unsigned);
  if (type.keep == Keep::type) return store_.put<EntityWithType>(id, type.name);
  const std::string_view attribute = first_string(record);
  kept_bytes_ += attribute.size();
  return store_.put<EntityWithAttr>(id, type.name, attribute);
}

/// Keeps the first string of what a part may be called after: a product, or the representation that
/// a mapped item maps.
void RecordLoader::keep_name(unsigned id, std::string_view type, std::string_view record) {
  const bool names_parts = type.find("PRODUCT") != std::string_view::npos ||
                           type.find("REPRESENTATION") != std::string_view::npos;
  if (names_parts) {
    const std::string_view name = whole_first_string(record);
    store_.names.insert_or_assign(id, name);
    kept_bytes_ += BYTES_OF_A_NAME + name.size();
  } else if (store_.entities[id] != nullptr) {
    store_.names.erase(id);  // The number was used before.
  }
}

inline const RecordLoader::Type& RecordLoader::type_of(std::string_view name) {
  if (name.size() > MAX_CACHED_LENGTH) return uncached_ = look_up(name);
  const Ends ends(name);
  std::uint64_t hash = (ends.head + name.size()) * 0x9E3779B97F4A7C15;
  hash = (hash ^ (hash >> 29) ^ ends.tail) * 0xBF58476D1CE4E5B9;
  std::size_t place = (hash >> 32) % CACHE_SIZE;
  for (; !cache_[place].name.empty(); place = (place + 1) % CACHE_SIZE) {
    const Type& known = cache_[place];
    if (known.ends == ends && known.name.size() == name.size() &&
        (name.size() <= 16 || known.name == name)) {
      return known;
    }
  }
  Type type = look_up(name);
  if (cached_ == CACHE_SIZE / 2) return uncached_ = type;
  ++cached_;
  if (type.keep == Keep::nothing) type.name = untyped_names_.emplace_back(name);
  type.ends = ends;
  return cache_[place] = type;
}

/// The same by the keyword's number, which is known after its first record.
inline const RecordLoader::Type& RecordLoader::type_of(std::string_view name,
                                                       std::uint32_t keyword_id) {
  if (keyword_id < by_keyword_.size() && by_keyword_[keyword_id] != nullptr) {
    return *by_keyword_[keyword_id];
  }
  const Type& type = type_of(name);
  if (keyword_id != Exchange::Record::NO_KEYWORD && &type != &uncached_) {
    if (keyword_id >= by_keyword_.size()) by_keyword_.resize(std::size_t{keyword_id} + 1);
    by_keyword_[keyword_id] = &type;
  }
  return type;
}

RecordLoader::Type RecordLoader::look_up(std::string_view name) {
  Type type{name, classify(name)};
  if (type.keep == Keep::nothing) return type;
  const std::size_t known = store_.types.size();
  std::tie(type.name, type.ids) = store_.intern_type(name);
  if (store_.types.size() != known) kept_bytes_ += BYTES_OF_A_TYPE + name.size();
  return type;
}

}  // namespace Kessel
