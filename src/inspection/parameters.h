// Takes records and header entities apart into their parameters (ISO 10303-21, 6 and 11).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Kessel {

// Nothing here recurses or fails: text that breaks off, or is none of what is asked for, gives what
// is there of it. Comments are passed over.

/// The position behind the string literal, the comment or else the one character at `at`.
std::size_t behind_token(std::string_view text, std::size_t at);

/// The position behind the parenthesis that closes the one at `at`; the end without one.
std::size_t behind_group(std::string_view text, std::size_t at);

/// Whether keywords may hold `c`.
constexpr bool is_keyword_character(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

/// Calls `visit(keyword, text_from_parenthesis)` for every `KEYWORD(...)` in `text` that is not
/// inside another: the one of a simple record, those of a complex one, those of a header.
template <class Visit>
void for_each_group(std::string_view text, Visit visit) {
  std::string_view keyword;
  std::size_t keyword_end = 0;
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (is_keyword_character(c)) {
      const bool goes_on = !keyword.empty() && keyword_end == at;
      const std::size_t begin = goes_on ? at - keyword.size() : at;
      keyword = text.substr(begin, at + 1 - begin);
      keyword_end = ++at;
    } else if (c == '(' && !keyword.empty()) {
      visit(keyword, text.substr(at));
      keyword = {};
      at = behind_group(text, at);
    } else {
      if (c == '=' || c == ';' || c == '\'') keyword = {};
      at = behind_token(text, at);
    }
  }
}

/// The items of the list that `text` begins with, "(a,(b,c),'d')", with nothing in front of them.
/// They are views into `text`; none for text that is no list.
std::vector<std::string_view> list_items(std::string_view text);

/// The parameters of the entity `keyword` in a record or header.
std::vector<std::string_view> parameters_of(std::string_view text, std::string_view keyword);

/// Parameter `i`, counted from 0; empty when there are fewer.
std::string_view parameter(const std::vector<std::string_view>& parameters, std::size_t i);

/// The string literal that `text` begins with, decoded to valid UTF-8; empty for all else.
std::string text_value(std::string_view text);

/// The strings of a list, each as text_value().
std::vector<std::string> text_values(std::string_view text);

/// The instance number that `text` begins with, "#12"; 0 for all else.
std::uint32_t reference_value(std::string_view text);

/// The enumeration item that `text` begins with, "MILLI" for ".MILLI."; empty for all else.
std::string_view enumeration_value(std::string_view text);

/// The number that `text` begins with, typed ("LENGTH_MEASURE(2.54)") or not; 0 for all else.
double number_value(std::string_view text);

}  // namespace Kessel
