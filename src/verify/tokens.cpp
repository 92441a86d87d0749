#include "verify/tokens.h"

#include <algorithm>
#include <cstddef>

#include "reader/text.h"
#include "verify/text_search.h"

namespace Kessel {

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool is_letter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

/// The length of what begins `text` and consists of such characters, the first taken as it is.
template <class Belongs>
std::size_t length_while(std::string_view text, Belongs belongs) {
  const auto* const end = std::find_if_not(text.begin() + 1, text.end(), belongs);
  return static_cast<std::size_t>(end - text.begin());
}

/// The length of the text up to the next `closing`, that included; NONE where it is not closed.
std::size_t length_until(std::string_view text, std::string_view closing, std::size_t from) {
  const std::size_t at = text.find(closing, from);
  return at == NONE ? NONE : at + closing.size();
}

/// A doubled apostrophe does not end a string.
std::size_t string_length(std::string_view text) {
  std::size_t length = length_until(text, "'", 1);
  while (length < text.size() && text[length] == '\'') length = length_until(text, "'", length + 1);
  return length;
}

/// The word that begins `text`, which does not begin with white space or a comment.
Token first_word(std::string_view text) {
  using enum Token::Kind;
  const char first = text.front();
  const auto word = [&](Token::Kind kind, std::size_t length) {
    return Token{length == NONE ? stray : kind, 0, text.substr(0, length)};
  };
  switch (first) {
    case '(':
    case ')':
    case ',':
    case '=':
      return word(mark, 1);
    case '$':
    case '*':
      return word(value, 1);
    case '\'':
      return word(string, string_length(text));
    case '"':
      return word(value, length_until(text, "\"", 1));
    case '#': {
      const char* behind = text.data() + 1;
      const std::uint32_t number = read_number(behind, text.data() + text.size());
      Token token =
          word(number == 0 ? stray : reference, static_cast<std::size_t>(behind - text.data()));
      token.number = number;
      return token;
    }
    case '.': {  // Where no enumeration value is closed, what follows may still be references.
      const std::size_t length =
          length_while(text, [](char c) { return is_letter(c) || is_digit(c); });
      const bool closed = length > 1 && length < text.size() && text[length] == '.';
      return closed ? word(value, length + 1) : word(stray, 1);
    }
    default:
      break;
  }
  if (is_letter(first) || first == '!') {
    return word(keyword, length_while(text, [](char c) { return is_letter(c) || is_digit(c); }));
  }
  if (is_digit(first) || first == '-' || first == '+') {
    return word(value, length_while(text, [](char c) {
                  return is_digit(c) || c == '.' || c == '-' || c == '+' || c == 'E' || c == 'e';
                }));
  }
  return word(stray, 1);
}

/// Where the list of parameters ends that begins at the parenthesis at `at`; 0 where there is none.
std::size_t behind_parameters(const std::vector<Token>& tokens, std::size_t at) {
  using enum Token::Kind;
  if (at >= tokens.size() || !tokens[at].is('(')) return 0;
  enum class After { opening, comma, keyword, value } after = After::opening;
  std::size_t depth = 1;
  for (++at; at < tokens.size(); ++at) {
    const Token& token = tokens[at];
    const bool may_begin = after == After::opening || after == After::comma;
    if (token.is('(')) {
      if (after == After::value) return 0;
      ++depth;
      after = After::opening;
    } else if (token.is(')')) {
      if (after == After::comma || after == After::keyword) return 0;
      if (--depth == 0) return at + 1;
      after = After::value;
    } else if (token.is(',')) {
      if (after != After::value) return 0;
      after = After::comma;
    } else if (!may_begin || token.kind == stray || token.kind == mark) {
      return 0;
    } else {
      after = token.kind == keyword ? After::keyword : After::value;
    }
  }
  return 0;
}

/// The same for a keyword and the parameters behind it.
std::size_t behind_simple_record(const std::vector<Token>& tokens, std::size_t at) {
  if (at >= tokens.size() || tokens[at].kind != Token::Kind::keyword) return 0;
  return behind_parameters(tokens, at + 1);
}

}  // namespace

bool Token::operator==(const Token& other) const {
  if (kind != other.kind) return false;
  return kind == Kind::reference ? number == other.number : text == other.text;
}

void take_apart(std::string_view text, std::vector<Token>& tokens) {
  tokens.clear();
  while (!text.empty()) {
    if (is_space(text.front())) {
      text.remove_prefix(1);
      continue;
    }
    std::size_t length;
    if (text.starts_with("/*")) {
      length = length_until(text, "*/", 2);
      if (length == NONE) tokens.push_back({Token::Kind::stray, 0, text});
    } else {
      tokens.push_back(first_word(text));
      length = tokens.back().text.size();
    }
    text.remove_prefix(std::min(length, text.size()));
  }
}

bool is_well_formed(const std::vector<Token>& tokens) {
  if (tokens.size() < 3 || tokens[0].kind != Token::Kind::reference || !tokens[1].is('=')) {
    return false;
  }
  if (!tokens[2].is('(')) return behind_simple_record(tokens, 2) == tokens.size();
  std::size_t at = 3;
  do {
    at = behind_simple_record(tokens, at);
    if (at == 0) return false;
  } while (at < tokens.size() && !tokens[at].is(')'));
  return at + 1 == tokens.size();
}

}  // namespace Kessel
