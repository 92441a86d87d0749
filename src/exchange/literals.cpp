#include "exchange/literals.h"

#include "exchange/characters.h"

namespace Kessel::Exchange {

namespace {

/// How many apostrophes stand in a row at `at`.
std::size_t apostrophes_at(std::string_view text, std::size_t at) {
  std::size_t count = 0;
  while (at + count < text.size() && text[at + count] == '\'') ++count;
  return count;
}

/// How many bytes of `text`, which begins with a "\", cannot begin anything else: a doubled "\", a
/// directive's beginning, or one byte alone.
std::size_t directive_length(std::string_view text) {
  if (text.starts_with("\\\\")) return 2;
  if (text.size() < 3) return 1;
  const char letter = text[1];
  if (text[2] == '\\') {
    if (letter == 'S') return text.size();  // with the character that is shifted
    if (letter == 'X' || letter == 'N' || letter == 'F') return 3;
  } else if (text.size() > 3 && text[3] == '\\') {
    const char which = text[2];
    if (letter == 'P' && which >= 'A' && which <= 'I') return 4;
    if (letter == 'X' && (which == '0' || which == '2' || which == '4')) return 4;
  }
  return 1;
}

/// Whether what stands at `at` is what follows a parameter. Comments do, and are not looked behind:
/// one that is far from closed would be gone through for every string in front of it.
bool follows_parameter(std::string_view text, std::size_t at) {
  constexpr std::string_view FOLLOWING = ",);{}";
  while (at < text.size() && (is_blank(text[at]) || begins_print_control(text, at))) {
    at += is_blank(text[at]) ? 1 : 3;
  }
  return at == text.size() || FOLLOWING.find(text[at]) != std::string_view::npos ||
         begins_comment(text, at);
}

}  // namespace

std::size_t behind_string(std::string_view text, std::size_t at) {
  for (++at; at < text.size();) {
    const std::size_t mark = text.find_first_of("'\\", at);
    if (mark == std::string_view::npos) break;
    if (text[mark] == '\\') {
      at = mark + directive_length(text.substr(mark, 4));
      if (text.substr(mark, 4) != "\\S\\'") continue;
      // Behind the apostrophe that belongs to the directive: pairs, which are characters, and
      // perhaps the one that closes the string.
      const std::size_t count = apostrophes_at(text, at);
      at += count;
      if (count % 2 == 1 && follows_parameter(text, at)) return at;
      continue;
    }
    const std::size_t count = apostrophes_at(text, mark);
    at = mark + count;
    if (count % 2 == 1) return at;
  }
  return std::string_view::npos;
}

}  // namespace Kessel::Exchange
