// Numbers without a sign, as instance names have them.
#pragma once

#include <array>
#include <bit>
#include <charconv>
#include <cstddef>
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

/// One in each byte of a word: times a byte, that byte everywhere.
inline constexpr std::uint64_t EACH_BYTE = 0x0101010101010101;

/// What eight digits say, the first in the lowest byte and each without the bits of "0": they are
/// summed up in pairs, fours and eights.
[[gnu::always_inline]] inline std::uint64_t sum_up(std::uint64_t digits) {
  constexpr std::uint64_t PAIRS = 0x000000FF000000FF;
  digits = digits * 10 + (digits >> 8);
  return ((digits & PAIRS) * 0x000F424000000064 + ((digits >> 16) & PAIRS) * 0x0000271000000001) >>
         32;
}

/// Takes the digits at `p`, which moves behind them, by `word`, the eight bytes there with the
/// first in the lowest byte. Returns false, and takes none, where all eight are digits.
///
/// What is no digit is shifted out, in front of which zeros come in.
[[gnu::always_inline]] inline bool take_short_number(std::uint64_t word, const char*& p,
                                                     std::uint64_t& value) {
  word ^= EACH_BYTE * '0';
  // What a byte carries over can only change bytes behind it, and it is no digit itself.
  const std::uint64_t other = ((word + EACH_BYTE * 0x76) | word) & (EACH_BYTE * 0x80);
  if (other == 0) [[unlikely]]
    return false;
  // The last bit of the first byte that is no digit.
  const auto end = static_cast<unsigned>(std::countr_zero(other));
  p += end >> 3;
  value = sum_up(word << 8 << (63 - end));
  return true;
}

/// The same as take_long_number(); at least eight bytes behind `p` can be read.
///
/// Fast path: nearly every number is short.
[[gnu::always_inline]] inline std::uint64_t take_number(const char*& p) {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint64_t word = 0;
    std::memcpy(&word, p, sizeof word);
    std::uint64_t value = 0;
    if (take_short_number(word, p, value)) return value;
  }
  return take_long_number(p);
}

/// Whether the eight bytes at `p` are digits; if so, `value` is what it was with them behind it.
[[gnu::always_inline]] inline bool take_eight_digits(const char* p, std::uint64_t& value) {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint64_t word = 0;
    std::memcpy(&word, p, sizeof word);
    if ((word & (word + EACH_BYTE * 6) & (EACH_BYTE * 0xF0)) != EACH_BYTE * '0') return false;
    value = value * 100'000'000 + sum_up(word ^ (EACH_BYTE * '0'));
    return true;
  }
  return false;
}

/// Room that write_number() may write to, at least.
inline constexpr std::size_t NUMBER_ROOM = 10;

/// Writes `number` in decimal at `out`, where NUMBER_ROOM bytes are free. Returns the end.
inline char* write_number_plainly(char* out, std::uint32_t number) {
  return std::to_chars(out, out + NUMBER_ROOM, number).ptr;
}

/// The three digits of each number below a thousand, the first in the lowest byte, and above them
/// how many bits zeros in front take.
inline constexpr auto THREE_DIGITS = [] {
  std::array<std::uint32_t, 1000> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    const std::uint32_t digits = (i / 100) | (i / 10 % 10) << 8 | (i % 10) << 16;
    const std::uint32_t zeros = i < 10 ? 2 : (i < 100 ? 1 : 0);
    table[i] = (digits + 0x303030) | (8 * zeros) << 24;
  }
  return table;
}();

/// The same as write_number_plainly().
///
/// Fast path: a file's numbers begin at 1, and nearly all are below a million.
[[gnu::always_inline]] inline char* write_number(char* out, std::uint32_t number) {
  if (std::endian::native != std::endian::little || number >= 1'000'000) {
    return write_number_plainly(out, number);
  }
  const auto put_first = [&](std::uint32_t digits) {
    const std::uint32_t zeros = digits >> 24;
    digits >>= zeros;
    std::memcpy(out, &digits, sizeof digits);  // One byte more, which what follows writes over.
    out += 3 - zeros / 8;
  };
  if (number < 1000) {
    put_first(THREE_DIGITS[number]);
    return out;
  }
  put_first(THREE_DIGITS[number / 1000]);
  std::memcpy(out, &THREE_DIGITS[number % 1000], sizeof(std::uint32_t));
  return out + 3;
}

}  // namespace Kessel::Exchange
