// Encodes UTF-8 text as exchange-string bodies, and paths as UTF-8.
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "encoding/unicode.h"
#include "kessel/encoding.h"

namespace Kessel {

namespace {

/// Appends UTF-16 units as a string body, keeping runs of wide units in one bracket.
class BodyWriter {
 public:
  void put(char16_t unit) {
    if (unit > 0xFF) {
      put_wide(unit);
    } else {
      close_run();
      put_narrow(static_cast<char>(unit));
    }
  }

  std::string finish() {
    close_run();
    return std::move(out_);
  }

 private:
  /// Units from 0x100 to 0xFFF give three digits and a zero byte, not four digits; outputs depend
  /// on it.
  void put_wide(char16_t unit) {
    if (!in_run_) out_ += "\\X2\\";
    in_run_ = true;
    constexpr std::string_view DIGITS = "0123456789ABCDEF";
    if (unit > 0xFFF) out_ += DIGITS[unit >> 12];
    out_ += DIGITS[(unit >> 8) & 0xF];
    out_ += DIGITS[(unit >> 4) & 0xF];
    out_ += DIGITS[unit & 0xF];
    if (unit <= 0xFFF) out_ += '\0';
  }

  void put_narrow(char c) {
    out_ += c;
    if (c == '\\' || c == '\'') out_ += c;
  }

  void close_run() {
    if (in_run_) out_ += "\\X0\\";
    in_run_ = false;
  }

  std::string out_;
  bool in_run_ = false;
};

}  // namespace

std::string encode_utf8_to_step(std::string_view utf8) {
  BodyWriter body;
  bool valid = true;
  while (!utf8.empty()) {
    const char32_t c = take_utf8(utf8, valid);
    if (c < 0x10000) {
      body.put(static_cast<char16_t>(c));
    } else {
      body.put(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      body.put(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    }
  }
  return body.finish();
}

std::string fspath_to_utf8(const std::filesystem::path& p) {
#if defined(_WIN32)
  const std::u8string text = p.u8string();
  return {text.begin(), text.end()};
#else
  // The system's paths are bytes: all there is to do is to make sure that they are UTF-8.
  if (!is_utf8(p.native())) {
    throw std::system_error(std::make_error_code(std::errc::illegal_byte_sequence));
  }
  return p.native();
#endif
}

}  // namespace Kessel
