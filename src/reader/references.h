// Finds the references in a record's text.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "reader/text.h"

namespace Kessel {

/// Calls `visit(number, begin, end)` for every `#n` in `text` outside string literals, in order,
/// the record's own number first; `begin` and `end` bound the digits. Stops at a "#" without a
/// number from 1 to 4,294,967,295: whatever stands behind it is not looked at. Returns whether it
/// came to the end.
template <class Visit>
bool for_each_reference_plainly(std::string_view text, Visit visit) {
  const char* p = text.data();
  const char* const end = p + text.size();
  while ((p = find_reference(p, end)) != nullptr) {
    const char* const begin = ++p;
    const std::uint32_t number = read_number(p, end);
    if (number == 0) return false;
    visit(number, begin, p);
  }
  return true;
}

#if defined(__SSE2__)

/// A bit for every "#" and "'" among the sixteen bytes at `p`. The two differ in one bit only.
inline unsigned marks_in_block(const char* p) {
  const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i cleared = _mm_and_si128(block, _mm_set1_epi8(static_cast<char>(0xFB)));
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(cleared, _mm_set1_epi8('#'))));
}

/// The same as for_each_reference_plainly().
///
/// Fast path: takes the marks of sixteen bytes at once and goes from bit to bit. An apostrophe
/// turns "inside a literal" on or off; a doubled one turns it off and on, which comes to the same.
template <class Visit>
bool for_each_reference(std::string_view text, Visit visit) {
  if (text.size() < 16) return for_each_reference_plainly(text, visit);
  const char* const end = text.data() + text.size();
  const char* const last_block = end - 16;
  bool inside_literal = false;
  for (const char* block = text.data();; block += 16) {
    unsigned marks;
    if (block <= last_block) {
      marks = marks_in_block(block);
    } else {  // The last sixteen bytes, without those that were in the block before.
      if (block >= end) return true;
      marks = marks_in_block(last_block) >> (block - last_block);
    }
    for (; marks != 0; marks &= marks - 1) {
      const char* p = block + std::countr_zero(marks);
      if (*p == '\'') {
        inside_literal = !inside_literal;
      } else if (!inside_literal) {
        const char* const begin = ++p;
        const std::uint32_t number = read_number(p, end);
        if (number == 0) return false;
        visit(number, begin, p);
      }
    }
  }
}

#else

/// The same as for_each_reference_plainly(), where there is nothing faster.
template <class Visit>
bool for_each_reference(std::string_view text, Visit visit) {
  return for_each_reference_plainly(text, visit);
}

#endif

}  // namespace Kessel
