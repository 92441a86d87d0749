// What a record says, in sixteen bytes.
#pragma once

#include <compare>
#include <cstdint>
#include <string_view>

namespace Kessel {

/// Sums up words, for what is never compared after: where two digests are equal, the records become
/// one. Comparing files has a hash of its own (sameness/hash.h): that takes all spellings of a
/// value for one and has 64 bits, since pairs that it finds are checked one by one. Here another
/// spelling is another text, and copies of a record are spelt alike. Different sequences of words
/// have different digests, but for one in 2^128 or those who look for it.
class Digest {
 public:
  void add(std::string_view word) {
    for (const char c : word) add_byte(static_cast<unsigned char>(c));
    add_byte(END_OF_WORD);
  }
  void add(std::uint64_t number) {
    for (int i = 0; i < 8; ++i) add_byte(static_cast<unsigned char>(number >> (8 * i)));
  }
  void add(const Digest& other) {
    add(other.first_);
    add(other.second_);
  }

  auto operator<=>(const Digest&) const = default;

 private:
  static constexpr unsigned char END_OF_WORD = 0;
  void add_byte(unsigned char byte) {
    first_ = (first_ ^ byte) * 0x0000'0100'0000'01B3;
    second_ = (second_ + byte) * 0x9E37'79B9'7F4A'7C15;
    second_ ^= second_ >> 29;
  }

  std::uint64_t first_ = 0xCBF2'9CE4'8422'2325;
  std::uint64_t second_ = 0;
};

/// The digest of the words of `body` (Exchange::Record::body), whatever its instance names are, and
/// without what stands in a collector's list.
Digest digest_of(std::string_view body);

}  // namespace Kessel
