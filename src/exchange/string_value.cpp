#include "exchange/string_value.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "encoding/unicode.h"
#include "exchange/lexer.h"

namespace Kessel::Exchange {

namespace {

constexpr std::uint16_t ALPHABETS[9][96] = {
#include "exchange/alphabets.inc"
};

constexpr bool is_surrogate(std::uint32_t unit) {
  return unit >= 0xD800 && unit < 0xE000;
}

/// Takes `digits` hexadecimal digits off the front of `text`.
std::optional<std::uint32_t> take_hex(std::string_view& text, std::size_t digits) {
  if (text.size() < digits) return std::nullopt;
  std::uint32_t value = 0;
  const char* const end = text.data() + digits;
  const auto [behind, error] = std::from_chars(text.data(), end, value, 16);
  if (error != std::errc() || behind != end) return std::nullopt;
  text.remove_prefix(digits);
  return value;
}

bool take(std::string_view& text, std::string_view beginning) {
  if (!text.starts_with(beginning)) return false;
  text.remove_prefix(beginning.size());
  return true;
}

/// Goes through a string's body and appends what it says.
class Decoder {
 public:
  explicit Decoder(std::string_view body) : rest_(body) {}

  std::string decode() {
    while (!rest_.empty()) {
      if (rest_.front() == '\\') {
        if (take(rest_, "\\\\")) {
          out_ += '\\';
        } else if (!take_directive()) {
          has_lone_backslash_ = true;
          out_ += '\\';
          rest_.remove_prefix(1);
        }
      } else if (take(rest_, "''")) {
        out_ += '\'';
      } else {
        take_character();
      }
    }
    return std::move(out_);
  }

  bool has_lone_backslash() const { return has_lone_backslash_; }

 private:
  void take_character() {
    const unsigned char byte = static_cast<unsigned char>(rest_.front());
    if (byte < 0x80) {
      if (byte != '\n' && byte != '\r') out_ += rest_.front();
      rest_.remove_prefix(1);
      return;
    }
    std::string_view behind = rest_;
    bool valid = true;
    const char32_t c = take_utf8(behind, valid);
    if (!valid) behind = rest_.substr(1);
    append_utf8(out_, valid ? c : byte);
    rest_ = behind;
  }

  /// Takes a directive, or nothing.
  bool take_directive() {
    const std::string_view before = rest_;
    const auto takes = [&](bool taken) {
      if (!taken) rest_ = before;
      return taken;
    };
    return takes(take_print_control()) || takes(take_shift()) || takes(take_page()) ||
           takes(take_byte()) || takes(take_run("\\X2\\", 4)) || takes(take_run("\\X4\\", 8));
  }

  bool take_print_control() { return take(rest_, "\\N\\") || take(rest_, "\\F\\"); }

  /// `\S\c`: the character of the page whose code is 128 above that of `c`.
  bool take_shift() {
    if (!take(rest_, "\\S\\") || rest_.empty()) return false;
    const unsigned char c = static_cast<unsigned char>(rest_.front());
    if (c < 0x20 || c > 0x7F) return false;
    rest_.remove_prefix(c == '\'' && rest_.starts_with("''") ? 2 : 1);
    const std::uint16_t code = page_[c - 0x20];
    append_utf8(out_, code == 0 ? REPLACEMENT_CHARACTER : code);
    return true;
  }

  bool take_page() {
    if (rest_.size() < 4 || !rest_.starts_with("\\P") || rest_[3] != '\\') return false;
    const char letter = rest_[2];
    if (letter < 'A' || letter > 'I') return false;
    page_ = ALPHABETS[letter - 'A'];
    rest_.remove_prefix(4);
    return true;
  }

  bool take_byte() {
    if (!take(rest_, "\\X\\")) return false;
    const auto code = take_hex(rest_, 2);
    if (!code) return false;
    append_utf8(out_, *code);
    return true;
  }

  /// `\X2\....\X0\` and `\X4\........\X0\`. A run that is not closed ends with its last digits.
  bool take_run(std::string_view directive, std::size_t digits) {
    if (!take(rest_, directive)) return false;
    bool is_empty = true;
    while (!take(rest_, "\\X0\\")) {
      auto unit = take_hex(rest_, digits);
      if (!unit) {
        has_lone_backslash_ = true;
        return !is_empty;
      }
      if (*unit >= 0xD800 && *unit < 0xDC00) {  // UTF-16, which the standard does not ask for.
        std::string_view behind = rest_;
        const auto second = take_hex(behind, digits);
        if (second && *second >= 0xDC00 && *second < 0xE000) {
          unit = 0x10000 + ((*unit - 0xD800) << 10) + (*second - 0xDC00);
          rest_ = behind;
        }
      }
      append_utf8(out_, is_surrogate(*unit) || *unit > 0x10FFFF ? REPLACEMENT_CHARACTER : *unit);
      is_empty = false;
    }
    return true;
  }

  std::string_view rest_;
  std::string out_;
  const std::uint16_t* page_ = ALPHABETS[0];
  bool has_lone_backslash_ = false;
};

std::string_view body_of(std::string_view literal) {
  return literal.size() < 2 ? std::string_view() : literal.substr(1, literal.size() - 2);
}

}  // namespace

std::string string_value(std::string_view literal) {
  return Decoder(body_of(literal)).decode();
}

bool has_lone_backslash(std::string_view text) {
  Lexer lexer(text);
  for (Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
    if (word.kind != WordKind::string) continue;
    Decoder decoder(body_of(word.text));
    decoder.decode();
    if (decoder.has_lone_backslash()) return true;
  }
  return false;
}

bool is_utf8(std::string_view text) {
  return Kessel::is_utf8(text);
}

std::string string_literal(std::string_view text) {
  constexpr std::string_view DIGITS = "0123456789ABCDEF";
  std::string out = "'";
  std::size_t open_digits = 0;  // of the run that is open: 4, 8, or 0 for none
  const auto switch_to = [&](std::size_t digits) {
    if (open_digits == digits) return;
    if (open_digits != 0) out += "\\X0\\";
    if (digits != 0) out += digits == 4 ? "\\X2\\" : "\\X4\\";
    open_digits = digits;
  };
  while (!text.empty()) {
    const auto byte = static_cast<unsigned char>(text.front());
    if (byte >= 0x20 && byte < 0x7F) {
      switch_to(0);
      out += text.front();
      if (byte == '\'' || byte == '\\') out += text.front();
      text.remove_prefix(1);
      continue;
    }
    std::string_view behind = text;
    bool valid = true;
    char32_t c = take_utf8(behind, valid);
    if (!valid) {
      c = byte;
      behind = text.substr(1);
    }
    text = behind;
    switch_to(c > 0xFFFF ? 8 : 4);
    for (std::size_t i = open_digits; i-- > 0;) out += DIGITS[(c >> (4 * i)) & 0xF];
  }
  switch_to(0);
  return out += '\'';
}

}  // namespace Kessel::Exchange
