// Takes records and header entities apart into their parameters.
#include "inspection/parameters.h"

#include <charconv>
#include <cmath>

#include "kessel/encoding.h"
#include "naming/characters.h"
#include "reader/record_loader.h"
#include "reader/text.h"

namespace Kessel {

namespace {

/// The position behind `end`, looked for from `from` on; the end of the text without one.
std::size_t behind(std::string_view text, std::string_view end, std::size_t from) {
  const std::size_t found = text.find(end, from);
  return found == std::string_view::npos ? text.size() : found + end.size();
}

bool begins_comment(std::string_view text, std::size_t at) {
  return text[at] == '/' && at + 1 < text.size() && text[at + 1] == '*';
}

/// `text` without white space and comments in front.
std::string_view without_front(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && (is_space(text[at]) || begins_comment(text, at))) {
    at = behind_token(text, at);
  }
  return text.substr(at);
}

}  // namespace

std::size_t behind_token(std::string_view text, std::size_t at) {
  // A doubled apostrophe closes a literal and opens the next, which comes to the same.
  if (text[at] == '\'') return behind(text, "'", at + 1);
  if (begins_comment(text, at)) return behind(text, "*/", at + 2);
  return at + 1;
}

std::size_t behind_group(std::string_view text, std::size_t at) {
  std::size_t open = 0;
  while (at < text.size()) {
    if (text[at] == '(') ++open;
    if (text[at] == ')' && --open == 0) return at + 1;
    at = behind_token(text, at);
  }
  return at;
}

std::vector<std::string_view> list_items(std::string_view text) {
  text = without_front(text);
  if (!text.starts_with('(')) return {};
  std::vector<std::string_view> items;
  std::size_t begin = 1;
  std::size_t at = 1;
  const auto take_item = [&] { items.push_back(without_front(text.substr(begin, at - begin))); };
  while (at < text.size() && text[at] != ')') {
    if (text[at] == ',') {
      take_item();
      begin = ++at;
    } else {
      at = text[at] == '(' ? behind_group(text, at) : behind_token(text, at);
    }
  }
  take_item();
  if (items.size() == 1 && items.front().empty()) items.clear();
  return items;
}

std::vector<std::string_view> parameters_of(std::string_view text, std::string_view keyword) {
  std::vector<std::string_view> parameters;
  for_each_group(text, [&](std::string_view found, std::string_view list) {
    if (found == keyword && parameters.empty()) parameters = list_items(list);
  });
  return parameters;
}

std::string_view parameter(const std::vector<std::string_view>& parameters, std::size_t i) {
  return i < parameters.size() ? parameters[i] : std::string_view();
}

std::string text_value(std::string_view text) {
  if (!text.starts_with('\'')) return {};
  return to_utf8(characters_of(decode_step_to_utf8(whole_first_string(text))));
}

std::vector<std::string> text_values(std::string_view text) {
  std::vector<std::string> values;
  for (const std::string_view item : list_items(text)) values.push_back(text_value(item));
  return values;
}

std::uint32_t reference_value(std::string_view text) {
  if (!text.starts_with('#')) return 0;
  const char* begin = text.data() + 1;
  return read_number_plainly(begin, text.data() + text.size());
}

std::string_view enumeration_value(std::string_view text) {
  if (!text.starts_with('.')) return {};
  const std::size_t end = text.find('.', 1);
  return end == std::string_view::npos ? std::string_view() : text.substr(1, end - 1);
}

double number_value(std::string_view text) {
  for_each_group(text, [&](std::string_view, std::string_view list) {
    text = parameter(list_items(list), 0);
  });
  if (text.starts_with('+')) text.remove_prefix(1);
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return std::isfinite(value) ? value : 0;  // "INF" and "NAN" are numbers to from_chars().
}

}  // namespace Kessel
