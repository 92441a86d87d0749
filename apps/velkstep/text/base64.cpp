// Bytes as text.
#include "text/base64.h"

#include <cstddef>
#include <string_view>

namespace Velkstep {

std::string base64(const std::vector<std::uint8_t>& bytes) {
  constexpr std::string_view DIGITS =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = bytes.size() - i < 3 ? bytes.size() - i : 3;
    std::uint32_t bits = 0;
    for (std::size_t k = 0; k < 3; ++k) bits = bits << 8 | (k < count ? bytes[i + k] : 0U);
    for (std::size_t k = 0; k < 4; ++k) {
      text += k <= count ? DIGITS[bits >> (18 - 6 * k) & 63U] : '=';
    }
  }
  return text;
}

}  // namespace Velkstep
