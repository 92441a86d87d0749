// Byte-level helpers for record texts: white space, numbers, marks.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "exchange/digits.h"

namespace Kessel {

/// White space of the "C" locale, whatever the process's locale is.
constexpr bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// `text` without white space at both ends.
constexpr std::string_view trim(std::string_view text) {
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  return text;
}

/// Reads the digits at `p`, up to `end`, as an unsigned 32-bit decimal number and moves `p` past
/// them. Returns 0 when there are none and when the value exceeds 4,294,967,295.
inline std::uint32_t read_number_plainly(const char*& p, const char* end) {
  std::uint64_t value = 0;
  for (; p != end; ++p) {
    const unsigned digit = static_cast<unsigned char>(*p) - unsigned{'0'};
    if (digit > 9) break;
    value = value * 10 + digit;
    if (value > UINT32_MAX) value = std::uint64_t{UINT32_MAX} + 1;  // Stays beyond the limit.
  }
  return value > UINT32_MAX ? 0 : static_cast<std::uint32_t>(value);
}

/// The first eight bytes of [p, end), the first in the lowest byte; zeros for what is missing.
inline std::uint64_t load_word(const char* p, const char* end) {
  std::uint64_t word = 0;
  if constexpr (std::endian::native == std::endian::little) {
    if (end - p >= 8) {
      std::memcpy(&word, p, 8);
      return word;
    }
    const auto size = static_cast<std::size_t>(end - p);
    if (size >= 4) {  // Two halves that overlap.
      std::uint32_t low = 0;
      std::uint32_t high = 0;
      std::memcpy(&low, p, 4);
      std::memcpy(&high, p + size - 4, 4);
      return low | (std::uint64_t{high} << (8 * (size - 4)));
    }
  }
  for (std::size_t i = 0; i < 8 && p + i != end; ++i) {
    word |= std::uint64_t{static_cast<unsigned char>(p[i])} << (8 * i);
  }
  return word;
}

/// The same as read_number_plainly().
///
/// Fast path: nearly every number is short.
inline std::uint32_t read_number(const char*& p, const char* end) {
  std::uint64_t value = 0;
  if (Exchange::take_short_number(load_word(p, end), p, value)) {
    return static_cast<std::uint32_t>(value);
  }
  return read_number_plainly(p, end);
}

/// The first "#" in [p, end) outside string literals, or null: none there, or an unclosed literal
/// before it. A doubled apostrophe closes a literal and opens the next, which comes to the same.
inline const char* find_reference(const char* p, const char* end) {
  for (; p != end; ++p) {
    if (*p == '#') return p;
    if (*p != '\'') continue;
    p = static_cast<const char*>(std::memchr(p + 1, '\'', static_cast<std::size_t>(end - p - 1)));
    if (p == nullptr) break;
  }
  return nullptr;
}

}  // namespace Kessel
