// JSON as every command prints it.
#include "json/json_line.h"

#include <string_view>

namespace Velkstep {

std::string json_line(const Json& value) {
  const std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  // DEL and the controls U+0080 to U+009F may stand in JSON as they are, but not on a terminal.
  // They occur in strings only.
  constexpr std::string_view DIGITS = "0123456789abcdef";
  std::string line;
  line.reserve(text.size() + 1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    const bool c1 = byte == 0xC2 && next >= 0x80 && next <= 0x9F;
    if (byte == 0x7F || c1) {
      const unsigned code = c1 ? next : byte;
      line += "\\u00";
      line += DIGITS[code >> 4];
      line += DIGITS[code & 0xF];
      if (c1) ++i;
    } else {
      line += text[i];
    }
  }
  line += '\n';
  return line;
}

}  // namespace Velkstep
