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
      const bool shifts = text.substr(mark, 4) == "\\S\\'";
      const bool doubled = text.substr(mark, 2) == "\\\\";
      at = mark + (shifts ? 3 : doubled ? 2 : 1);
      if (!shifts) continue;
      // An apostrophe that belongs to the directive, and others behind it: pairs, which are
      // characters, and perhaps the one that closes the string.
      const std::size_t count = apostrophes_at(text, at);
      at += count;
      if (count % 2 == 0 && follows_parameter(text, at)) return at;
      continue;
    }
    const std::size_t count = apostrophes_at(text, mark);
    at = mark + count;
    if (count % 2 == 1) return at;
  }
  return std::string_view::npos;
}

}  // namespace Kessel::Exchange
