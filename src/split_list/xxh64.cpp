#include "split_list/xxh64.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace Kessel {

namespace {

/// A number of the type, least significant byte first whatever the machine.
template <class Number>
Number little_endian(const char* at) {
  Number number = 0;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(&number, at, sizeof number);
  } else {
    for (std::size_t i = sizeof number; i-- > 0;) {
      number = static_cast<Number>(number << 8) | static_cast<unsigned char>(at[i]);
    }
  }
  return number;
}

}  // namespace

std::uint64_t Xxh64::mixed(std::uint64_t lane, std::uint64_t input) {
  return std::rotl(lane + input * PRIME_2, 31) * PRIME_1;
}

std::uint64_t Xxh64::merged(std::uint64_t hash, std::uint64_t lane) {
  return (hash ^ mixed(0, lane)) * PRIME_1 + PRIME_4;
}

void Xxh64::add_stripes(const char* at, std::size_t count) {
  auto [a, b, c, d] = lanes_;
  for (; count > 0; --count, at += STRIPE) {
    a = mixed(a, little_endian<std::uint64_t>(at));
    b = mixed(b, little_endian<std::uint64_t>(at + 8));
    c = mixed(c, little_endian<std::uint64_t>(at + 16));
    d = mixed(d, little_endian<std::uint64_t>(at + 24));
  }
  lanes_ = {a, b, c, d};
}

void Xxh64::add(std::string_view text) {
  const std::size_t held = size_ % STRIPE;
  size_ += text.size();
  if (held + text.size() < STRIPE) {
    std::copy(text.begin(), text.end(), rest_.data() + held);
    return;
  }
  if (held > 0) {
    const std::size_t missing = STRIPE - held;
    std::copy_n(text.data(), missing, rest_.data() + held);
    add_stripes(rest_.data(), 1);
    text.remove_prefix(missing);
  }
  add_stripes(text.data(), text.size() / STRIPE);
  text.remove_prefix(text.size() - text.size() % STRIPE);
  std::copy(text.begin(), text.end(), rest_.data());
}

std::uint64_t Xxh64::value() const {
  std::uint64_t hash = PRIME_5;
  if (size_ >= STRIPE) {
    hash = std::rotl(lanes_[0], 1) + std::rotl(lanes_[1], 7) + std::rotl(lanes_[2], 12) +
           std::rotl(lanes_[3], 18);
    for (const std::uint64_t lane : lanes_) hash = merged(hash, lane);
  }
  hash += size_;

  const char* at = rest_.data();
  std::size_t left = size_ % STRIPE;
  for (; left >= 8; left -= 8, at += 8) {
    hash ^= mixed(0, little_endian<std::uint64_t>(at));
    hash = std::rotl(hash, 27) * PRIME_1 + PRIME_4;
  }
  if (left >= 4) {
    hash ^= little_endian<std::uint32_t>(at) * PRIME_1;
    hash = std::rotl(hash, 23) * PRIME_2 + PRIME_3;
    left -= 4;
    at += 4;
  }
  for (; left > 0; --left, ++at) {
    hash ^= static_cast<unsigned char>(*at) * PRIME_5;
    hash = std::rotl(hash, 11) * PRIME_1;
  }
  hash = (hash ^ (hash >> 33)) * PRIME_2;
  hash = (hash ^ (hash >> 29)) * PRIME_3;
  return hash ^ (hash >> 32);
}

}  // namespace Kessel
