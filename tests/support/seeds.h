// Which generated files a test tries.
#pragma once

#include <cstdint>

#include "support/effort.h"

namespace Kessel::test {

/// The first seed and how many for tests of generated files.
struct Seeds {
  std::uint64_t first;
  std::uint64_t count;
};

/// From the environment variables VELKSTEP_FIRST_SEED and VELKSTEP_RANDOM_SEEDS, else 1 and
/// tries(`usual`).
inline Seeds seeds_to_try(std::uint64_t usual) {
  return {number_from_environment("VELKSTEP_FIRST_SEED", 1),
          number_from_environment("VELKSTEP_RANDOM_SEEDS", tries(usual))};
}

}  // namespace Kessel::test
