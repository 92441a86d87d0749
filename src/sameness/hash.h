// Hashes that are the same on every machine and run.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
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

/// Appends up to eight bytes in the order of the text, whatever the machine's.
constexpr std::uint64_t word_of(std::string_view bytes) {
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
  }
  return word;
}

/// The hash of a text, its length included.
constexpr std::uint64_t hash_of(std::string_view text, std::uint64_t so_far = 0) {
  so_far = combined(so_far, text.size());
  for (; text.size() >= 8; text.remove_prefix(8)) {
    so_far = combined(so_far, word_of(text.substr(0, 8)));
  }
  return text.empty() ? so_far : combined(so_far, word_of(text));
}

/// Stands for what a reference to no record leads to.
inline constexpr std::uint64_t MISSING = mixed(0x6D69'7373);

}  // namespace Kessel::Sameness
