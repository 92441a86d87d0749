// Normal forms and case folding, from tables of the Unicode character database.
#include "naming/unicode_forms.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <tuple>
#include <utility>

namespace Kessel {

namespace {

struct Decomposition {
  char32_t whole;
  char32_t first;
  char32_t second;  // 0 where the character only has another form
};

struct Composition {
  char32_t first;
  char32_t second;
  char32_t whole;
};

struct CombiningRange {
  char32_t first;
  char32_t last;
  std::uint8_t combining_class;
};

struct Folding {
  char32_t from;
  char32_t to[3];  // ends at a 0
};

// Each sorted by what it is searched for.
#include "naming/unicode_tables.inc"

// Hangul syllables are computed, not listed (Unicode 15, 3.12).
constexpr char32_t S_BASE = 0xAC00;
constexpr char32_t L_BASE = 0x1100;
constexpr char32_t V_BASE = 0x1161;
constexpr char32_t T_BASE = 0x11A7;
constexpr char32_t L_COUNT = 19;
constexpr char32_t V_COUNT = 21;
constexpr char32_t T_COUNT = 28;
constexpr char32_t S_COUNT = L_COUNT * V_COUNT * T_COUNT;

bool is_within(char32_t c, char32_t base, char32_t count) {
  return c >= base && c - base < count;
}

std::uint8_t combining_class(char32_t c) {
  const auto* after =
      std::upper_bound(std::begin(COMBINING_RANGES), std::end(COMBINING_RANGES), c,
                       [](char32_t value, const auto& range) { return value < range.first; });
  if (after == std::begin(COMBINING_RANGES)) return 0;
  const CombiningRange& range = *std::prev(after);
  return c <= range.last ? range.combining_class : 0;
}

void append_decomposed(std::u32string& out, char32_t c) {
  if (c < 0xC0) {
    out += c;
    return;
  }
  if (is_within(c, S_BASE, S_COUNT)) {
    const char32_t index = c - S_BASE;
    out.push_back(L_BASE + index / (V_COUNT * T_COUNT));
    out.push_back(V_BASE + index % (V_COUNT * T_COUNT) / T_COUNT);
    if (index % T_COUNT != 0) out.push_back(T_BASE + index % T_COUNT);
    return;
  }
  const auto* found =
      std::lower_bound(std::begin(DECOMPOSITIONS), std::end(DECOMPOSITIONS), c,
                       [](const auto& entry, char32_t value) { return entry.whole < value; });
  if (found == std::end(DECOMPOSITIONS) || found->whole != c) {
    out += c;
    return;
  }
  append_decomposed(out, found->first);
  if (found->second != 0) append_decomposed(out, found->second);
}

bool is_ascii(std::u32string_view text) {
  return std::all_of(text.begin(), text.end(), [](char32_t c) { return c < 0x80; });
}

/// Canonical decomposition: every mark behind its character, marks by ascending combining class.
std::u32string to_decomposed_form(std::u32string_view text) {
  std::u32string out;
  if (is_ascii(text)) return out = text;  // Fast path: there are no marks.
  for (const char32_t c : text) append_decomposed(out, c);
  for (auto at = out.begin(); at != out.end();) {
    const auto end = std::find_if_not(at, out.end(), is_combining);
    std::stable_sort(
        at, end, [](char32_t a, char32_t b) { return combining_class(a) < combining_class(b); });
    at = end == out.end() ? end : end + 1;
  }
  return out;
}

/// The one character for `first` and `second`, or 0.
char32_t composed(char32_t first, char32_t second) {
  if (is_within(first, L_BASE, L_COUNT) && is_within(second, V_BASE, V_COUNT)) {
    return S_BASE + ((first - L_BASE) * V_COUNT + (second - V_BASE)) * T_COUNT;
  }
  if (is_within(first, S_BASE, S_COUNT) && (first - S_BASE) % T_COUNT == 0 &&
      is_within(second, T_BASE + 1, T_COUNT - 1)) {
    return first + (second - T_BASE);
  }
  const auto* found = std::lower_bound(
      std::begin(COMPOSITIONS), std::end(COMPOSITIONS), std::pair(first, second),
      [](const auto& entry, auto pair) { return std::pair(entry.first, entry.second) < pair; });
  if (found == std::end(COMPOSITIONS)) return 0;
  return found->first == first && found->second == second ? found->whole : 0;
}

}  // namespace

bool is_combining(char32_t c) {
  return combining_class(c) != 0;
}

std::u32string to_composed_form(std::u32string_view text) {
  const std::u32string parts = to_decomposed_form(text);
  std::u32string out;
  std::size_t starter = std::u32string::npos;  // where the last character stands that can take more
  int last_class = 0;                          // of what was kept behind the starter
  for (const char32_t c : parts) {
    const int own_class = combining_class(c);
    if (starter != std::u32string::npos && (starter + 1 == out.size() || last_class < own_class)) {
      if (const char32_t whole = composed(out[starter], c); whole != 0) {
        out[starter] = whole;
        continue;
      }
    }
    if (own_class == 0) starter = out.size();
    last_class = own_class;
    out += c;
  }
  return out;
}

std::u32string to_caseless_form(std::u32string_view text) {
  std::u32string folded;
  if (is_ascii(text)) {  // Fast path: the table has no more than this of it.
    folded = text;
    for (char32_t& c : folded) c += c >= U'A' && c <= U'Z' ? U'a' - U'A' : 0;
    return folded;
  }
  for (const char32_t c : to_decomposed_form(text)) {
    const auto* found =
        std::lower_bound(std::begin(FOLDINGS), std::end(FOLDINGS), c,
                         [](const auto& entry, char32_t value) { return entry.from < value; });
    if (found != std::end(FOLDINGS) && found->from == c) {
      for (const char32_t* to = found->to; to != std::end(found->to) && *to != 0; ++to) {
        folded += *to;
      }
    } else {
      folded += c;
    }
  }
  return to_decomposed_form(folded);
}

}  // namespace Kessel
