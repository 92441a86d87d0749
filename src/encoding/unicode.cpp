// UTF-8 conversion and the test for graphic characters.
#include "encoding/unicode.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace Kessel {

namespace {

struct Range {
  char16_t first;
  char16_t last;
};

constexpr Range GRAPHIC_RANGES[] = {
#include "encoding/graphic_ranges.inc"
};

/// What may follow a lead byte: how many bytes, and the bounds of the first of them. The bounds
/// keep out overlong forms, surrogates and values above 0x10FFFF.
struct Continuation {
  int count;
  unsigned char low;
  unsigned char high;
};

Continuation continuation_of(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return {1, 0x80, 0xBF};
  if (lead == 0xE0) return {2, 0xA0, 0xBF};
  if (lead == 0xED) return {2, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {2, 0x80, 0xBF};
  if (lead == 0xF0) return {3, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {3, 0x80, 0xBF};
  if (lead == 0xF4) return {3, 0x80, 0x8F};
  return {0, 0, 0};
}

}  // namespace

bool is_graphic(char16_t c) {
  const Range* after =
      std::upper_bound(std::begin(GRAPHIC_RANGES), std::end(GRAPHIC_RANGES), c,
                       [](char16_t value, Range range) { return value < range.first; });
  return after != std::begin(GRAPHIC_RANGES) && c <= std::prev(after)->last;
}

void append_utf8(std::string& out, char32_t c) {
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | (c >> 18));
    put(0x80 | ((c >> 12) & 0x3F));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

char32_t take_utf8(std::string_view& text, bool& valid) {
  const auto lead = static_cast<unsigned char>(text.front());
  text.remove_prefix(1);
  if (lead < 0x80) return lead;

  auto [count, low, high] = continuation_of(lead);
  char32_t c = lead & (0x3Fu >> count);
  bool complete = count > 0;
  for (; complete && count > 0; --count) {
    const auto next = text.empty() ? 0 : static_cast<unsigned char>(text.front());
    complete = next >= low && next <= high;
    if (!complete) break;
    text.remove_prefix(1);
    c = (c << 6) | (next & 0x3F);
    low = 0x80;
    high = 0xBF;
  }
  if (complete) return c;
  valid = false;
  return REPLACEMENT_CHARACTER;
}

bool is_utf8(std::string_view text) {
  const auto is_ascii = [](char c) { return static_cast<signed char>(c) >= 0; };
  const auto first = std::find_if_not(text.begin(), text.end(), is_ascii);  // Mostly there is none.
  text.remove_prefix(static_cast<std::size_t>(first - text.begin()));
  bool valid = true;
  while (valid && !text.empty()) take_utf8(text, valid);
  return valid;
}

}  // namespace Kessel
