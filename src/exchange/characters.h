// The classes of bytes that the exchange structure is made of (ISO 10303-21, 5.2 and 6).
#pragma once

#include <cstddef>
#include <string_view>

namespace Kessel::Exchange {

/// What may stand between words: blanks and the control characters that real files have there.
constexpr bool is_blank(char c) {
  return static_cast<unsigned char>(c) <= ' ' && (c == ' ' || (c >= '\t' && c <= '\r'));
}

constexpr bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

/// Whether a keyword may begin with `c`. Small letters are not legal, but real files have them.
constexpr bool begins_keyword(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

constexpr bool is_in_keyword(char c) {
  return begins_keyword(c) || is_digit(c) || c == '-';
}

/// Whether `text` has a comment's beginning at `at`.
constexpr bool begins_comment(std::string_view text, std::size_t at) {
  return text[at] == '/' && at + 1 < text.size() && text[at + 1] == '*';
}

/// The position behind the comment that begins at `at`; `npos` where nothing closes it.
constexpr std::size_t end_of_comment(std::string_view text, std::size_t at) {
  const std::size_t end = text.find("*/", at + 2);
  return end == std::string_view::npos ? end : end + 2;
}

/// The same; the end of the text where nothing closes it.
constexpr std::size_t behind_comment(std::string_view text, std::size_t at) {
  const std::size_t end = end_of_comment(text, at);
  return end == std::string_view::npos ? text.size() : end;
}

/// Whether `text` has a print control directive (`\N\`, `\F\`) at `at`, which counts as a blank.
constexpr bool begins_print_control(std::string_view text, std::size_t at) {
  return text[at] == '\\' && at + 2 < text.size() && text[at + 2] == '\\' &&
         (text[at + 1] == 'N' || text[at + 1] == 'F');
}

/// The first position at or behind `at` that is neither blank nor in a comment or print control
/// directive.
constexpr std::size_t behind_blanks(std::string_view text, std::size_t at) {
  while (at < text.size()) {
    if (is_blank(text[at])) {
      ++at;
    } else if (begins_comment(text, at)) {
      at = behind_comment(text, at);
    } else if (begins_print_control(text, at)) {
      at += 3;
    } else {
      break;
    }
  }
  return at;
}

/// `text` without blanks at its end.
constexpr std::string_view without_blanks_behind(std::string_view text) {
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace Kessel::Exchange
