// Byte-level helpers for record texts: white space, numbers, and the next mark.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Kessel {

/// White space of the "C" locale, whatever the process's locale is.
constexpr bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// `text` without white space at both ends.
constexpr std::string_view trimmed(std::string_view text) {
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  return text;
}

/// Reads the digits at `p`, up to `end`, as an unsigned 32-bit decimal number and moves `p` past
/// them. Returns 0 when there are none and when the value exceeds 4,294,967,295.
inline std::uint32_t read_number(const char*& p, const char* end) {
  std::uint64_t value = 0;
  for (; p != end; ++p) {
    const unsigned digit = static_cast<unsigned char>(*p) - unsigned{'0'};
    if (digit > 9) break;
    value = value * 10 + digit;
    if (value > UINT32_MAX) value = std::uint64_t{UINT32_MAX} + 1;  // Stays beyond the limit.
  }
  return value > UINT32_MAX ? 0 : static_cast<std::uint32_t>(value);
}

/// The first "#" or "'" in [p, end), or `end`.
///
/// Fast path: eight bytes at a time. The two marks differ in one bit only, so after clearing it
/// both are bytes equal to '#', which the subtraction finds.
inline const char* find_mark(const char* p, const char* end) {
  static_assert(('\'' & ~0x04) == '#');
  constexpr std::uint64_t ONES = 0x0101010101010101;
  if constexpr (std::endian::native == std::endian::little) {
    for (; end - p >= 8; p += 8) {
      std::uint64_t word;
      std::memcpy(&word, p, 8);
      word = (word & (ONES * 0xFB)) ^ (ONES * '#');
      const std::uint64_t hits = (word - ONES) & ~word & (ONES * 0x80);
      if (hits != 0) return p + (std::countr_zero(hits) >> 3);
    }
  }
  while (p != end && *p != '#' && *p != '\'') ++p;
  return p;
}

/// The first "#" in [p, end) outside string literals, or null: none there, or an unclosed literal
/// before it. A doubled apostrophe closes a literal and opens the next, which comes to the same.
inline const char* find_reference(const char* p, const char* end) {
  for (;;) {
    p = find_mark(p, end);
    if (p == end) return nullptr;
    if (*p == '#') return p;
    ++p;
    p = static_cast<const char*>(std::memchr(p, '\'', static_cast<std::size_t>(end - p)));
    if (p == nullptr) return nullptr;
    ++p;
  }
}

}  // namespace Kessel
