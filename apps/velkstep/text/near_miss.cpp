#include "text/near_miss.h"

#include <algorithm>
#include <cstddef>

namespace Velkstep {

namespace {

/// How many letters to leave out, put in, replace or swap with the next make `a` into `b`.
std::size_t distance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t k = 0; k <= b.size(); ++k) {
      if (i == 0 || k == 0) {
        steps[i][k] = i + k;
        continue;
      }
      const std::size_t wrong = a[i - 1] == b[k - 1] ? 0 : 1;
      steps[i][k] =
          std::min({steps[i - 1][k] + 1, steps[i][k - 1] + 1, steps[i - 1][k - 1] + wrong});
      const bool swapped = i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1];
      if (swapped) steps[i][k] = std::min(steps[i][k], steps[i - 2][k - 2] + 1);
    }
  }
  return steps[a.size()][b.size()];
}

}  // namespace

std::string near_miss(const std::string& typed, const std::vector<std::string>& words) {
  constexpr std::size_t LONGEST = 64;  // No word is near to what is longer.
  if (typed.empty() || typed.size() > LONGEST) return {};
  std::string nearest;
  // A third of the letters may be wrong, or one.
  std::size_t least = std::max<std::size_t>(typed.size() / 3, 1) + 1;
  for (const std::string& word : words) {
    const std::size_t steps = word.starts_with(typed) ? 1 : distance(typed, word);
    if (steps >= least || steps >= word.size()) continue;
    least = steps;
    nearest = word;
  }
  return nearest;
}

std::string no_choice(const std::string& typed, const std::vector<std::string>& words) {
  const std::string meant = near_miss(typed, words);
  if (!meant.empty()) return typed + ": did you mean " + meant + "?";
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : ", ") + word;
  return typed + ": none of " + all;
}

}  // namespace Velkstep
