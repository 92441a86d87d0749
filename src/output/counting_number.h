// Numbers that are written one after the other.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "exchange/digits.h"

namespace Kessel {

/// Writes a number and the ones that follow it, in decimal.
class CountingNumber {
 public:
  /// Bytes from where it writes that may change.
  static constexpr std::size_t ROOM = Exchange::NUMBER_ROOM;

  CountingNumber() = default;
  explicit CountingNumber(std::uint32_t first) : next_(first) {}

  /// Writes the next number at `out` and returns the end of its digits.
  ///
  /// Fast path: nine times of ten nothing but the last digit of the one before has changed.
  char* write(char* out) {
    if (same_tens_ == 0) return spell(out);
    digits_ += last_digit_;
    --same_tens_;
    ++next_;
    std::memcpy(out, &digits_, sizeof digits_);
    return out + size_;
  }

 private:
  char* spell(char* out) {
    const std::uint32_t number = next_++;
    char* const end = Exchange::write_number(out, number);
    size_ = end - out;
    if (std::endian::native == std::endian::little && size_ <= 8) {
      std::memcpy(&digits_, out, sizeof digits_);
      last_digit_ = std::uint64_t{1} << (8 * (size_ - 1));
      same_tens_ = 9 - number % 10;
    }
    return end;
  }

  std::uint32_t next_ = 0;
  std::uint32_t same_tens_ = 0;   // how many numbers differ from the last one in one digit only
  std::uint64_t digits_ = 0;      // of the last one, the first in the lowest byte
  std::uint64_t last_digit_ = 0;  // what makes its last digit one more
  std::ptrdiff_t size_ = 0;
};

}  // namespace Kessel
