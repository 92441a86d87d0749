#include "extract/similarity.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Kessel {

namespace {

/// Longer names are compared by their beginnings.
constexpr std::size_t MOST_COMPARED = 64;

std::string caseless(std::string_view text) {
  std::string lower(text.substr(0, MOST_COMPARED));
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::size_t edit_distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j < row.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::size_t unlikeness(std::string_view name, std::string_view wanted) {
  if (name.empty() || wanted.empty()) return UNLIKE;
  const std::string a = caseless(name);
  const std::string b = caseless(wanted);
  // Short names stand in many words by chance.
  const bool holds_most = 2 * a.size() >= b.size() && b.find(a) != std::string::npos;
  if (holds_most || a.find(b) != std::string::npos) return 0;
  const std::size_t distance = edit_distance(a, b);
  const std::size_t most = std::max<std::size_t>(std::max(a.size(), b.size()) / 3, 1);
  return distance > most ? UNLIKE : distance;
}

}  // namespace Kessel
