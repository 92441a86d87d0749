// How many generated files a test tries.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace Kessel::test {

/// The first seed and how many for tests of generated files.
struct Seeds {
  std::uint64_t first;
  std::uint64_t count;
};

/// From the environment variables VELKSTEP_FIRST_SEED and VELKSTEP_RANDOM_SEEDS, else 1 and
/// `usual`.
inline Seeds seeds_to_try(std::uint64_t usual) {
  const auto number = [](const char* name, std::uint64_t otherwise) {
    const char* const text = std::getenv(name);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
  };
  return {number("VELKSTEP_FIRST_SEED", 1), number("VELKSTEP_RANDOM_SEEDS", usual)};
}

}  // namespace Kessel::test
