// Hashes that are the same on every machine and run.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Kessel::Sameness {

/// Spreads every bit over all others; one to one.
constexpr std::uint64_t mixed(std::uint64_t x) {
  x ^= x >> 32;
  x *= 0xD6E8'FEB8'6659'FD93;
  x ^= x >> 32;
  x *= 0xD6E8'FEB8'6659'FD93;
  return x ^ (x >> 32);
}

/// The hash of a sequence: what was hashed so far, and what comes next.
constexpr std::uint64_t combined(std::uint64_t so_far, std::uint64_t next) {
  return mixed(std::rotl(so_far, 23) * 0x9E37'79B9'7F4A'7C15 + next);
}

/// The first eight bytes of `text`, or all, as a number, whatever the machine's order of bytes.
inline std::uint64_t word_of(std::string_view text) {
  std::uint64_t word = 0;
  if constexpr (std::endian::native == std::endian::little) {
    if (text.size() >= sizeof word) {
      std::memcpy(&word, text.data(), sizeof word);
    } else if (!text.empty()) {  // An empty one may have no data at all.
      std::memcpy(&word, text.data(), text.size());
    }
  } else {
    for (std::size_t i = 0; i < text.size() && i < 8; ++i) {
      word |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
    }
  }
  return word;
}

/// The hash of a text, its length included.
inline std::uint64_t hash_of(std::string_view text, std::uint64_t so_far = 0) {
  so_far += text.size() * 0x9E37'79B9'7F4A'7C15;
  for (; text.size() > 8; text.remove_prefix(8)) so_far = combined(so_far, word_of(text));
  return combined(so_far, word_of(text));
}

/// Stands for what a reference to no record leads to.
inline constexpr std::uint64_t MISSING = mixed(0x6D69'7373);

}  // namespace Kessel::Sameness
