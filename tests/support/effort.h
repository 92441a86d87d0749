// How many inputs the tests try that make inputs at random, or one after the other.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace Kessel::test {

/// The number that the environment variable `name` holds, `otherwise` where it is not set.
inline std::uint64_t number_from_environment(const char* name, std::uint64_t otherwise) {
  const char* const text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

/// `usual` inputs, times VELKSTEP_EFFORT where the environment has it: 0.1 for a tenth, as the
/// preset with sanitizers sets it, 10 for ten times as many. At least one.
inline std::uint64_t tries(std::uint64_t usual) {
  const char* const effort = std::getenv("VELKSTEP_EFFORT");
  if (effort == nullptr) return usual;
  const auto count =
      static_cast<std::uint64_t>(std::strtod(effort, nullptr) * static_cast<double>(usual));
  return count == 0 ? 1 : count;
}

/// As long, or a part of it: for inputs whose length is what they test.
inline std::uint64_t length_to_try(std::uint64_t usual) {
  return std::min(usual, tries(usual));
}

}  // namespace Kessel::test
