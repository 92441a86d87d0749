// The hash function XXH64, by which anybody can tell whether a file is as it was written.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Kessel {

/// Hashes a text that comes in pieces, with the seed 0: what `xxhsum -H64` prints.
class Xxh64 {
 public:
  void add(std::string_view text);
  /// Of all that was added until now.
  std::uint64_t value() const;

 private:
  static constexpr std::size_t STRIPE = 32;
  void add_stripes(const char* at, std::size_t count);

  static constexpr std::uint64_t PRIME_1 = 0x9E37'79B1'85EB'CA87;
  static constexpr std::uint64_t PRIME_2 = 0xC2B2'AE3D'27D4'EB4F;
  static constexpr std::uint64_t PRIME_3 = 0x1656'67B1'9E37'79F9;
  static constexpr std::uint64_t PRIME_4 = 0x85EB'CA77'C2B2'AE63;
  static constexpr std::uint64_t PRIME_5 = 0x27D4'EB2F'1656'67C5;
  static std::uint64_t mixed(std::uint64_t lane, std::uint64_t input);
  static std::uint64_t merged(std::uint64_t hash, std::uint64_t lane);

  std::array<std::uint64_t, 4> lanes_ = {PRIME_1 + PRIME_2, PRIME_2, 0, 0 - PRIME_1};
  std::array<char, STRIPE> rest_{};  // what did not fill a stripe
  std::uint64_t size_ = 0;
};

}  // namespace Kessel
