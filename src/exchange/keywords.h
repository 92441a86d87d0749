// Where keywords end (ISO 10303-21, 6.4.1).
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>

#include "exchange/characters.h"

namespace Kessel::Exchange {

/// The first byte at or behind `p` that is in no keyword.
inline const char* behind_keyword(const char* p, const char* end) {
#if defined(__SSE2__)
  // Fast path: sixteen bytes at once. A range of bytes is moved to the least signed values.
  const auto all = [](int c) { return _mm_set1_epi8(static_cast<char>(c)); };
  const auto is_below = [&](__m128i bytes, int first, int count) {
    const __m128i moved = _mm_sub_epi8(bytes, all(first + 128));
    return _mm_cmplt_epi8(moved, all(count - 128));
  };
  while (end - p >= 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i letters = is_below(_mm_or_si128(bytes, all(0x20)), 'a', 26);
    const __m128i signs =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, all('_')), _mm_cmpeq_epi8(bytes, all('-')));
    const __m128i in = _mm_or_si128(_mm_or_si128(letters, signs), is_below(bytes, '0', 10));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(in));
    if (mask != 0xFFFF) return p + std::countr_one(mask);
    p += 16;
  }
#endif
  while (p != end && is_in_keyword(*p)) ++p;
  return p;
}

}  // namespace Kessel::Exchange
