#include "encoding/plain_decoding.h"

#include <cstddef>

#include "encoding/unicode.h"

namespace Kessel::test::plain {

namespace {

bool is_hex(char c) {
  return std::string_view("0123456789ABCDEFabcdef").find(c) != std::string::npos;
}

/// The run of hexadecimal digits at `from`, at most `most` of them.
std::string digits_at(const std::string& text, std::size_t from, std::size_t most) {
  std::string digits;
  while (digits.size() < most && from < text.size() && is_hex(text[from])) digits += text[from++];
  return digits;
}

char32_t graphic_or_replacement(const std::string& digits) {
  const auto value = static_cast<char16_t>(std::stoul(digits, nullptr, 16));
  return is_graphic(value) ? value : U'\uFFFD';
}

/// What stands in place of the `length` characters at a backslash; a length of 0 is no directive.
struct Directive {
  std::size_t length = 0;
  std::string replacement;
};

Directive byte_directive(const std::string& text, std::size_t p) {
  Directive directive{5, ""};
  const std::string digits = digits_at(text, p + 3, 2);
  if (digits.empty()) return directive;
  const char32_t c = graphic_or_replacement(digits);
  if (c == U'\uFFFD') {
    directive.replacement = "\xEF\xBF\xBD";
  } else {
    directive.replacement = std::string(1, static_cast<char>(c));
  }
  return directive;
}

Directive wide_directive(const std::string& text, std::size_t p) {
  const std::size_t q = text.find("\\X0\\", p + 4);
  if (q == std::string::npos) return {};
  const std::size_t d = q - p;
  Directive directive{d + 4, ""};
  if (d % 2 == 1) return directive;
  for (std::size_t offset = 0; offset < d - 4; offset += 4) {
    const std::string digits = digits_at(text, p + 4 + offset, 4);
    if (!digits.empty()) append_utf8(directive.replacement, graphic_or_replacement(digits));
  }
  return directive;
}

Directive directive_at(const std::string& text, std::size_t p) {
  const std::size_t n = text.size();
  if (p + 1 < n && text[p + 1] == '\\') return {1, ""};
  if (p + 3 >= n) return {};
  if (text[p + 1] == 'S' && text[p + 2] == '\\') return {4, ""};
  if (text[p + 1] == 'P' && text[p + 3] == '\\') return {4, ""};
  if (text[p + 1] != 'X') return {};
  if (text[p + 2] == '\\') return p + 4 < n ? byte_directive(text, p) : Directive{};
  if (text[p + 2] != '2' && text[p + 2] != '4') return {};
  return text[p + 3] == '\\' ? wide_directive(text, p) : Directive{};
}

}  // namespace

std::string decode_in_place(std::string_view in) {
  std::string text(in);
  while (!text.empty() && text.back() == ' ') text.pop_back();
  while (!text.empty() && text.front() == ' ') text.erase(0, 1);
  for (const char control : {'\t', '\b', '\f', '\v', '\r', '\n'}) {
    std::size_t at = 0;
    while ((at = text.find(control)) != std::string::npos) text.erase(at, 1);
  }
  for (std::size_t at = 0; (at = text.find("''", at)) != std::string::npos; ++at) {
    text.replace(at, 2, "'");
  }
  std::size_t p = 0;
  while ((p = text.find('\\', p)) != std::string::npos) {
    const Directive directive = directive_at(text, p);
    if (directive.length == 0) {
      ++p;
    } else {
      text.replace(p, directive.length, directive.replacement);
      p += directive.replacement.size();
    }
  }
  return text;
}

}  // namespace Kessel::test::plain
