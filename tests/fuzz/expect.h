// How fuzzers state what must hold.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace Kessel::test {

/// Ends the process, so that the fuzzer keeps the input, unless `holds`.
inline void expect(bool holds, std::string_view what) {
  if (holds) return;
  std::fprintf(stderr, "NOT SO: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

}  // namespace Kessel::test
