#include "encoding/string_body.h"

#include "encoding/unicode.h"

namespace Kessel {

namespace {

/// How a character is written, from the directive that opens a run to its number of digits.
struct Form {
  std::string_view directive;
  int digits;
  bool in_runs;
};

constexpr Form PLAIN = {"", 0, false};
constexpr Form BYTE = {"\\X\\", 2, false};
constexpr Form WIDE = {"\\X2\\", 4, true};
constexpr Form WIDEST = {"\\X4\\", 8, true};
constexpr std::string_view RUN_END = "\\X0\\";

const Form& form_of(char32_t c) {
  if (c >= 0x20 && c <= 0x7E) return PLAIN;
  if (c <= 0xFF) return BYTE;
  return c <= 0xFFFF ? WIDE : WIDEST;
}

}  // namespace

std::string encode_string_body(std::string_view utf8) {
  std::string out;
  const Form* run = nullptr;
  bool valid = true;
  while (!utf8.empty()) {
    const char32_t c = take_utf8(utf8, valid);
    const Form& form = form_of(c);
    if (run != nullptr && run != &form) out += RUN_END;
    if (run != &form) out += form.directive;
    run = form.in_runs ? &form : nullptr;
    if (form.digits == 0) {
      const char plain = static_cast<char>(c);
      out.append(plain == '\'' || plain == '\\' ? 2 : 1, plain);
    }
    for (int shift = 4 * (form.digits - 1); shift >= 0; shift -= 4) {
      out += "0123456789ABCDEF"[(c >> shift) & 0xF];
    }
  }
  if (run != nullptr) out += RUN_END;
  return out;
}

}  // namespace Kessel
