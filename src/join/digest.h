// What a record says, in sixteen bytes.
#pragma once

#include <bit>
#include <compare>
#include <cstdint>
#include <string_view>

#include "sameness/hash.h"

namespace Kessel {

/// Sums up words, for what is never compared after: where two digests are equal, the records become
/// one. Comparing files has a hash of its own (sameness/hash.h): that takes all spellings of a
/// value for one and has 64 bits, since pairs that it finds are checked one by one. Here another
/// spelling is another text, and copies of a record are spelt alike. Different sequences of words
/// have different digests, but for one in 2^128 or those who look for it.
class Digest {
 public:
  void add(std::string_view word) {
    add(std::uint64_t{word.size()});
    for (; word.size() > 8; word.remove_prefix(8)) add(Sameness::word_of(word));
    add(Sameness::word_of(word));
  }
  void add(std::uint64_t number) {
    first_ = Sameness::combined(first_, number);
    second_ = (std::rotl(second_, 29) ^ number) * 0x9E37'79B9'7F4A'7C15;
    second_ ^= second_ >> 32;
  }
  void add(const Digest& other) {
    add(other.first_);
    add(other.second_);
  }

  auto operator<=>(const Digest&) const = default;

 private:
  std::uint64_t first_ = 0xCBF2'9CE4'8422'2325;
  std::uint64_t second_ = 0;
};

/// The digest of the words of `body` (Exchange::Record::body), whatever its instance names are, and
/// without what stands in a collector's list.
Digest digest_of(std::string_view body);

}  // namespace Kessel
