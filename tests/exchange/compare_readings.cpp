#include "exchange/compare_readings.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "exchange/event_log.h"
#include "exchange/lexer.h"
#include "exchange/plain_reader.h"
#include "exchange/string_value.h"

namespace Kessel::test {

namespace {

using Lines = std::vector<std::string>;

bool is_begun(const Lines& log) {
  return std::find(log.begin(), log.end(), "begin HEADER ") != log.end();
}

/// The first line that two logs do not have in common.
std::string first_difference(const std::string& what, const Lines& a, const Lines& b) {
  const auto [at_a, at_b] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  if (at_a == a.end() && at_b == b.end()) return {};
  return what + ":\n  " + (at_a == a.end() ? "(nothing)" : *at_a) + "\n  " +
         (at_b == b.end() ? "(nothing)" : *at_b);
}

/// What is told without scrutiny: no warnings, and nothing at all where there is an error.
Lines without_scrutiny(const Lines& log) {
  Lines rest;
  for (const std::string& line : log) {
    if (!line.starts_with("warning ") && !line.starts_with("keyword ")) rest.push_back(line);
  }
  return rest;
}

char kind_of(const Exchange::Word& word) {
  using enum Exchange::WordKind;
  switch (word.kind) {
    case constant:
      return 'C';
    case keyword:
      return 'K';
    case integer:
      return 'I';
    case real:
      return 'R';
    case string:
      return 'S';
    case binary:
      return 'B';
    case enumeration:
      return 'E';
    case resource:
      return 'U';
    default:
      return word.text.front();
  }
}

/// The difference between the lexer and the plain tokens of a legal file.
std::string difference_of_words(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const auto tokens = plain::tokens_of(text);
  Exchange::Lexer lexer(text);
  for (const plain::Token& token : *tokens) {
    const Exchange::Word word = lexer.next();
    if (word.text != token.text || kind_of(word) != token.kind) {
      return "words: " + token.text + " and " + std::string(word.text);
    }
    if (token.kind == 'S' && token.text.find("\\P") == std::string::npos &&
        Exchange::is_utf8(token.text) &&
        Exchange::string_value(word.text) != plain::value_of(token.text)) {
      return "string: " + token.text;
    }
  }
  return lexer.next().kind == Exchange::WordKind::end ? "" : "words: one more";
}

}  // namespace

std::string difference_of_readings(std::string_view file, std::size_t block_size) {
  const Lines log = event_log(file);
  const Lines expected = plain::events_of(file);
  if (is_begun(log) || is_begun(expected)) {
    const std::string difference = first_difference("plain and reader", expected, log);
    if (!difference.empty()) return difference;
  }
  const std::string in_blocks =
      first_difference("whole and in blocks", log, event_log(file, block_size));
  if (!in_blocks.empty()) return in_blocks;
  const bool has_error = !log.empty() && log.back().starts_with("error ");
  const bool is_legal = plain::is_legal(file);
  // Numbers above 2^64-1 are legal, but not read.
  if (has_error && is_legal && is_begun(log) && !log.back().starts_with("error record_number_")) {
    return "legal, but: " + log.back();
  }
  if (!has_error) {
    const std::string second =
        first_difference("first and second", without_scrutiny(log),
                         event_log(file, block_size, Exchange::Scrutiny::none));
    if (!second.empty()) return second;
  }
  const LaidOutLog laid_out = laid_out_log(file, block_size);
  const std::string by_layout =
      first_difference("first and second by its layout", laid_out.first, laid_out.second);
  if (!by_layout.empty()) return by_layout;
  return is_legal ? difference_of_words(file) : "";
}

}  // namespace Kessel::test
