// The generator's own source of pseudo-random numbers.

#pragma once

#include <cstdint>

namespace Kessel::bench {

// A splitmix64 sequence. The standard library's distributions may differ between implementations;
// this one yields the same numbers everywhere, so that a seed names one file.
class Random {
 public:
  // Starts the sequence that belongs to `seed`; every value is allowed.
  explicit Random(std::uint64_t seed) : state_(seed) {}

  // Returns the next 64 bits of the sequence.
  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t bits = state_;
    bits = (bits ^ (bits >> 30U)) * 0xBF58476D1CE4E5B9U;
    bits = (bits ^ (bits >> 27U)) * 0x94D049BB133111EBU;
    return bits ^ (bits >> 31U);
  }

  // Returns a whole number from 0 to `count` - 1; `count` must not be 0. The slight preference for
  // small numbers that the remainder brings does not matter here.
  std::uint32_t below(std::uint32_t count) { return static_cast<std::uint32_t>(next() % count); }

  // Returns a length in millimetres from `low` to `high`, in steps of 0.05 mm.
  double length(double low, double high) {
    const double step = 0.05;
    const auto steps = static_cast<std::uint32_t>((high - low) / step) + 1U;
    return low + static_cast<double>(below(steps)) * step;
  }

  // Returns a value from 0 to 1 in steps of 1/255, as colours have.
  double colour_level() { return static_cast<double>(below(256)) / 255.0; }

 private:
  std::uint64_t state_;
};

}  // namespace Kessel::bench
