#include "exchange/keyword_ids.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstring>

namespace Kessel::Exchange {

namespace {

constexpr int CACHE_BITS = 10;

// What no schema has more of: it bounds what a file can make grow here.
constexpr std::size_t MOST_KEYWORDS = 4096;
constexpr std::size_t MOST_LENGTH = 128;

template <class Word>
std::uint64_t word_at(const char* place) {
  Word word = 0;
  std::memcpy(&word, place, sizeof word);
  return word;
}

}  // namespace

inline KeywordIds::Ends::Ends(std::string_view name) {
  const char* const begin = name.data();
  const char* const end = begin + name.size();
  if (name.size() >= 8) {
    first = word_at<std::uint64_t>(begin);
    last = word_at<std::uint64_t>(end - 8);
  } else if (name.size() >= 4) {
    first = word_at<std::uint32_t>(begin);
    last = word_at<std::uint32_t>(end - 4);
  } else {
    for (const char c : name) first = first << 8 | static_cast<unsigned char>(c);
  }
}

KeywordIds::KeywordIds() : cache_(std::size_t{1} << CACHE_BITS) {}

inline std::size_t KeywordIds::place_of(const Ends& ends) {
  const std::uint64_t mixed = (ends.first + ends.last * 31) * 0x9E37'79B9'7F4A'7C15;
  return mixed >> (64 - CACHE_BITS);
}

/// Whether `known` is that keyword, which has those ends.
inline bool KeywordIds::is(const Known& known, const Ends& ends, std::string_view keyword) {
  // Names of up to sixteen bytes are their ends.
  const std::size_t size = keyword.size();
  return known.ends == ends && known.name.size() == size &&
         (size <= 16 || std::memcmp(known.name.data() + 8, keyword.data() + 8, size - 16) == 0);
}

std::uint32_t KeywordIds::id_of(std::string_view keyword) {
  const Ends ends(keyword);
  Known& known = cache_[place_of(ends)];
  return is(known, ends, keyword) ? known.id : look_up(known, ends, keyword);
}

#if defined(__SSE2__)

namespace {

/// A bit for each " " and "(" among sixteen bytes. The two differ in one bit only.
unsigned ends_of_keywords(const char* p) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i cleared = _mm_and_si128(bytes, _mm_set1_epi8(static_cast<char>(~0x08)));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(cleared, _mm_set1_epi8(' '))));
}

}  // namespace

std::uint32_t KeywordIds::recognise(const char* text, std::string_view& keyword) const {
  static_assert(READ_AHEAD == 32);
  const unsigned ends_here = ends_of_keywords(text) | ends_of_keywords(text + 16) << 16;
  if (ends_here == 0) return NONE;
  const std::string_view name(text, static_cast<std::size_t>(std::countr_zero(ends_here)));
  const Ends ends(name);
  const Known& known = cache_[place_of(ends)];
  if (name.empty() || !is(known, ends, name)) return NONE;
  keyword = name;
  return known.id;
}

#else

std::uint32_t KeywordIds::recognise(const char*, std::string_view&) const {
  return NONE;
}

#endif

std::uint32_t KeywordIds::look_up(Known& known, const Ends& ends, std::string_view keyword) {
  if (keyword.size() > MOST_LENGTH) return NONE;
  auto entry = ids_.find(std::string(keyword));
  if (entry == ids_.end()) {
    if (ids_.size() == MOST_KEYWORDS) return NONE;
    entry = ids_.emplace(keyword, static_cast<std::uint32_t>(ids_.size())).first;
  }
  known = {ends, entry->first, entry->second};
  return known.id;
}

}  // namespace Kessel::Exchange
