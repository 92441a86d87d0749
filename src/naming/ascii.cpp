// Transliteration by table.
#include "naming/ascii.h"

#include <algorithm>
#include <iterator>

#include "naming/unicode_forms.h"

namespace Kessel {

namespace {

struct AsciiForm {
  char32_t from;
  const char* to;
};

// Sorted by `from`.
#include "naming/ascii_table.inc"

void append_code_point(std::u32string& out, char32_t c) {
  constexpr std::string_view DIGITS = "0123456789ABCDEF";
  out += U'U';
  int shift = 12;
  while (c >> shift > 0xF) shift += 4;
  for (; shift >= 0; shift -= 4) out += static_cast<char32_t>(DIGITS[(c >> shift) & 0xF]);
}

}  // namespace

std::u32string to_ascii(std::u32string_view text) {
  std::u32string out;
  for (const char32_t c : text) {
    if (c < 0x80) {
      out += c;
      continue;
    }
    const auto* form =
        std::lower_bound(std::begin(ASCII_FORMS), std::end(ASCII_FORMS), c,
                         [](const AsciiForm& entry, char32_t value) { return entry.from < value; });
    if (form != std::end(ASCII_FORMS) && form->from == c) {
      const std::string_view to = form->to;
      out.append(to.begin(), to.end());
    } else if (!is_combining(c)) {
      append_code_point(out, c);
    }
  }
  return out;
}

}  // namespace Kessel
