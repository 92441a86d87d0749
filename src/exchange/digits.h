// Numbers without a sign, as instance names have them.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#include "exchange/characters.h"

namespace Kessel::Exchange {

/// The digits at `p`, which moves behind them; 0 where they say more than 2^64-1.
[[gnu::noinline]] inline std::uint64_t take_long_number(const char*& p) {
  std::uint64_t value = 0;
  bool is_too_large = false;
  for (; is_digit(*p); ++p) {
    const auto digit = static_cast<std::uint64_t>(*p - '0');
    is_too_large |= value > (~std::uint64_t{0} - digit) / 10;
    value = value * 10 + digit;
  }
  return is_too_large ? 0 : value;
}

/// The same; at least eight bytes behind `p` can be read.
///
/// Fast path for up to seven digits, which is nearly every number: eight bytes are taken at once,
/// what is no digit is shifted out, and the digits are summed up in pairs, fours and eights.
[[gnu::always_inline]] inline std::uint64_t take_number(const char*& p) {
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::uint64_t EACH_BYTE = 0x0101010101010101;
    std::uint64_t word = 0;
    std::memcpy(&word, p, 8);
    word ^= EACH_BYTE * '0';
    // What a byte carries over can only change bytes behind it, and it is no digit itself.
    const std::uint64_t other = ((word + EACH_BYTE * 0x76) | word) & (EACH_BYTE * 0x80);
    if (other != 0) {
      const int digits = std::countr_zero(other) >> 3;
      if (digits == 0) return 0;
      word <<= 64 - 8 * digits;
      word = word * 10 + (word >> 8);
      p += digits;
      constexpr std::uint64_t PAIRS = 0x000000FF000000FF;
      return ((word & PAIRS) * 0x000F424000000064 + ((word >> 16) & PAIRS) * 0x0000271000000001) >>
                 32 &
             0xFFFFFFFF;
    }
  }
  return take_long_number(p);
}

/// Whether the eight bytes at `p` are digits; if so, `value` is what it was with them behind it.
[[gnu::always_inline]] inline bool take_eight_digits(const char* p, std::uint64_t& value) {
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::uint64_t EACH_BYTE = 0x0101010101010101;
    std::uint64_t word = 0;
    std::memcpy(&word, p, 8);
    if ((word & (word + EACH_BYTE * 6) & (EACH_BYTE * 0xF0)) != EACH_BYTE * '0') return false;
    word ^= EACH_BYTE * '0';
    word = word * 10 + (word >> 8);
    constexpr std::uint64_t PAIRS = 0x000000FF000000FF;
    const std::uint64_t eight =
        ((word & PAIRS) * 0x000F424000000064 + ((word >> 16) & PAIRS) * 0x0000271000000001) >> 32 &
        0xFFFFFFFF;
    value = value * 100'000'000 + eight;
    return true;
  }
  return false;
}

}  // namespace Kessel::Exchange
