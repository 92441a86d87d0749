#include "verify/string_value.h"

#include <charconv>
#include <cstddef>
#include <cstdint>

#include "encoding/unicode.h"
#include "verify/text_search.h"

namespace Kessel {

namespace {

/// Takes `digits` hexadecimal digits off the front of `text`.
std::optional<char32_t> take_hex(std::string_view& text, std::size_t digits) {
  if (text.size() < digits) return std::nullopt;
  std::uint32_t value = 0;
  const char* const end = text.data() + digits;
  const auto [behind, error] = std::from_chars(text.data(), end, value, 16);
  const bool is_character = value < 0xD800 || (value > 0xDFFF && value <= 0x10FFFF);
  if (error != std::errc() || behind != end || !is_character) return std::nullopt;
  text.remove_prefix(digits);
  return value;
}

/// Takes what stands behind `\X2\` or `\X4\` off the front of `text`, the end of the run included.
bool take_run(std::string_view& text, std::size_t digits, std::string& out) {
  do {
    const std::optional<char32_t> c = take_hex(text, digits);
    if (!c) return false;
    append_utf8(out, *c);
  } while (!take(text, "\\X0\\"));
  return true;
}

}  // namespace

std::optional<std::string> string_value(std::string_view body) {
  std::string out;
  while (!body.empty()) {
    if (take(body, "''")) {
      out += '\'';
    } else if (take(body, "\\\\")) {
      out += '\\';
    } else if (take(body, "\\X\\")) {
      const std::optional<char32_t> c = take_hex(body, 2);
      if (!c) return std::nullopt;
      append_utf8(out, *c);
    } else if (take(body, "\\X2\\")) {
      if (!take_run(body, 4, out)) return std::nullopt;
    } else if (take(body, "\\X4\\")) {
      if (!take_run(body, 8, out)) return std::nullopt;
    } else if (body.front() >= ' ' && body.front() <= '~' && body.front() != '\'' &&
               body.front() != '\\') {
      out += body.front();
      body.remove_prefix(1);
    } else {
      return std::nullopt;
    }
  }
  return out;
}

}  // namespace Kessel
