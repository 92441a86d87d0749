#include "join/mark.h"

#include <charconv>

#include "exchange/characters.h"

namespace Kessel {

namespace {

constexpr std::string_view SPLIT = " velkstep split ";
constexpr std::size_t SPLIT_DIGITS = 16;

/// Takes the first comment off `lead`: what stands between its ends. None where there is none.
std::optional<std::string_view> take_comment(std::string_view& lead) {
  const std::size_t begin = lead.find("/*");
  if (begin == std::string_view::npos) return std::nullopt;
  const std::size_t end = Exchange::behind_comment(lead, begin);
  std::string_view inside = lead.substr(begin + 2, end - begin - 2);
  if (inside.ends_with("*/")) inside.remove_suffix(2);
  lead.remove_prefix(end);
  return inside;
}

/// The number that is the whole of `digits`.
std::optional<std::uint64_t> number_of_digits(std::string_view digits, int base) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [behind, error] = std::from_chars(digits.data(), end, number, base);
  if (error != std::errc() || behind != end) return std::nullopt;
  return number;
}

}  // namespace

Mark mark_in(std::string_view lead) {
  Mark mark;
  while (const auto comment = take_comment(lead)) {
    if (*comment == "~") {
      mark = {Mark::Kind::made, 0};
      continue;
    }
    const bool is_stand_in = comment->starts_with('~');
    if (const auto number = number_of_digits(comment->substr(is_stand_in ? 1 : 0), 10)) {
      mark = {is_stand_in ? Mark::Kind::stand_in : Mark::Kind::whole, *number};
    }
  }
  return mark;
}

std::optional<std::uint64_t> split_in(std::string_view lead) {
  while (const auto comment = take_comment(lead)) {
    if (!comment->starts_with(SPLIT)) continue;
    const std::string_view rest = comment->substr(SPLIT.size());
    if (rest.size() > SPLIT_DIGITS && rest[SPLIT_DIGITS] == ':') {
      return number_of_digits(rest.substr(0, SPLIT_DIGITS), 16);
    }
  }
  return std::nullopt;
}

}  // namespace Kessel
