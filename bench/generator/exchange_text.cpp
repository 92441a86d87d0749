// Encodes UTF-8 text as the body of an exchange-structure string literal.

#include "exchange_text.h"

#include <cstddef>
#include <cstdint>

namespace Kessel::bench {
namespace {

constexpr char32_t REPLACEMENT = 0xFFFD;

// Which characters a run of the literal holds: plain ones, or those of one directive.
enum class Run { plain, two_bytes, four_bytes };

// Decodes the character at `position` of `utf8` and moves `position` behind it.
char32_t next_character(std::string_view utf8, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(utf8[position++]);
  if (lead < 0x80) return lead;
  const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : -1;
  if (following < 0) return REPLACEMENT;
  char32_t character = lead & (0x3FU >> following);
  for (int i = 0; i < following; ++i) {
    if (position == utf8.size()) return REPLACEMENT;
    const auto byte = static_cast<unsigned char>(utf8[position]);
    if ((byte & 0xC0U) != 0x80U) return REPLACEMENT;
    character = (character << 6U) | (byte & 0x3FU);
    ++position;
  }
  return character;
}

Run run_of(char32_t character) {
  if (character >= 0x20 && character < 0x7F) return Run::plain;
  return character <= 0xFFFF ? Run::two_bytes : Run::four_bytes;
}

void append_hexadecimal(std::string& out, char32_t character, unsigned digits) {
  for (unsigned i = digits; i-- > 0;) out += "0123456789ABCDEF"[(character >> (4U * i)) & 0xFU];
}

}  // namespace

void append_exchange_text(std::string& out, std::string_view utf8) {
  Run run = Run::plain;
  for (std::size_t position = 0; position < utf8.size();) {
    const char32_t character = next_character(utf8, position);
    const Run wanted = run_of(character);
    if (wanted != run) {
      if (run != Run::plain) out += "\\X0\\";
      if (wanted != Run::plain) out += wanted == Run::two_bytes ? "\\X2\\" : "\\X4\\";
      run = wanted;
    }
    if (run == Run::plain) {
      if (character == U'\'' || character == U'\\') out += static_cast<char>(character);
      out += static_cast<char>(character);
    } else {
      append_hexadecimal(out, character, run == Run::two_bytes ? 4 : 8);
    }
  }
  if (run != Run::plain) out += "\\X0\\";
}

}  // namespace Kessel::bench
