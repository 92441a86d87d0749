#include "naming/exchange_endings.h"

#include <algorithm>

namespace Kessel {

namespace {

/// In small letters.
constexpr std::string_view ENDINGS[] = {".stp", ".step", ".p21"};

char in_small(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view without_exchange_ending(std::string_view name) {
  for (const std::string_view ending : ENDINGS) {
    if (name.size() < ending.size()) continue;
    const std::string_view stem = name.substr(0, name.size() - ending.size());
    if (std::equal(ending.begin(), ending.end(), name.begin() + stem.size(),
                   [](char a, char b) { return a == in_small(b); })) {
      return stem;
    }
  }
  return name;
}

}  // namespace Kessel
