#include "exchange/lexer.h"

#include <charconv>

#include "exchange/characters.h"
#include "exchange/keywords.h"
#include "exchange/literals.h"

namespace Kessel::Exchange {

namespace {

constexpr bool is_hex_digit(char c) {
  return is_digit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

}  // namespace

Word Lexer::next() {
  at_ = behind_blanks(text_, at_);
  if (at_ >= text_.size()) return {};
  const char c = text_[at_];
  switch (c) {
    case '(':
      return take(WordKind::open, 1);
    case ')':
      return take(WordKind::close, 1);
    case ',':
      return take(WordKind::comma, 1);
    case '=':
      return take(WordKind::equals, 1);
    case ';':
      return take(WordKind::semicolon, 1);
    case '$':
      return take(WordKind::unset, 1);
    case '*':
      return take(WordKind::derived, 1);
    case '#':
      return take_name(WordKind::instance);
    case '@':
      return take_name(WordKind::value);
    case '"':
      return take_enclosed(WordKind::binary, '"', is_hex_digit);
    case '<':
      return take_enclosed(WordKind::resource, '>', [](char) { return true; });
    case '\'': {
      const std::size_t end = behind_string(text_, at_);
      return end == std::string_view::npos ? take(WordKind::other, text_.size() - at_)
                                           : take(WordKind::string, end - at_);
    }
    default:
      break;
  }
  const bool user_defined = c == '!';
  std::size_t end = at_ + (user_defined ? 1 : 0);
  if (end < text_.size() && begins_keyword(text_[end])) {
    const char* const begin = text_.data() + at_;
    const char* const behind = behind_keyword(text_.data() + end, text_.data() + text_.size());
    return take(WordKind::keyword, static_cast<std::size_t>(behind - begin));
  }
  if (c == '.' && at_ + 1 < text_.size() && begins_keyword(text_[at_ + 1])) {
    return take_enclosed(WordKind::enumeration, '.', is_in_keyword);
  }
  return take_number();
}

Word Lexer::take(WordKind kind, std::size_t length) {
  const Word word{kind, text_.substr(at_, length)};
  at_ += length;
  return word;
}

/// "#" or "@" and what belongs to it: digits, or a constant's name.
Word Lexer::take_name(WordKind number) {
  std::size_t end = at_ + 1;
  while (end < text_.size() && is_digit(text_[end])) ++end;
  if (end > at_ + 1) return take(number, end - at_);
  while (end < text_.size() && is_in_keyword(text_[end])) ++end;
  return take(end > at_ + 1 ? WordKind::constant : WordKind::other, end - at_);
}

/// A number, with whatever letters it has; a single byte where there is none.
Word Lexer::take_number() {
  std::size_t end = at_;
  bool has_digits = false;
  bool is_real = false;
  for (; end < text_.size(); ++end) {
    const char c = text_[end];
    const bool in_exponent = end > at_ && (text_[end - 1] == 'E' || text_[end - 1] == 'e');
    if (is_digit(c)) {
      has_digits = true;
    } else if (c == '.') {
      is_real = true;
    } else if (has_digits && (c == 'E' || c == 'e' || c == 'D' || c == 'd')) {
      is_real = true;
    } else if ((c != '+' && c != '-') || (end != at_ && !in_exponent)) {
      break;
    }
  }
  if (!has_digits) return take(WordKind::other, 1);
  return take(is_real ? WordKind::real : WordKind::integer, end - at_);
}

/// What begins here and ends with `last`, where all between are `members`; a single byte otherwise.
Word Lexer::take_enclosed(WordKind kind, char last, bool (*is_member)(char)) {
  for (std::size_t end = at_ + 1; end < text_.size(); ++end) {
    if (text_[end] == last) return take(kind, end + 1 - at_);
    if (!is_member(text_[end])) break;
  }
  return take(WordKind::other, 1);
}

std::uint64_t number_in(std::string_view name) {
  std::uint64_t number = 0;
  const char* const end = name.data() + name.size();
  const auto [behind, error] = std::from_chars(name.data() + (name.empty() ? 0 : 1), end, number);
  return error == std::errc() && behind == end ? number : 0;
}

}  // namespace Kessel::Exchange
