#include "naming/characters.h"

#include "encoding/unicode.h"

namespace Kessel {

std::u32string characters_of(std::string_view text) {
  std::u32string out;
  while (!text.empty()) {
    const std::string_view from = text;
    bool valid = true;
    const char32_t character = take_utf8(text, valid);
    if (valid) {
      out += character;
      continue;
    }
    for (const char c : from.substr(0, from.size() - text.size())) {
      const auto byte = static_cast<unsigned char>(c);
      out += byte >= 0xA0 ? char32_t{byte} : REPLACEMENT_CHARACTER;
    }
  }
  return out;
}

std::string to_utf8(std::u32string_view characters) {
  std::string out;
  for (const char32_t c : characters) append_utf8(out, c);
  return out;
}

}  // namespace Kessel
