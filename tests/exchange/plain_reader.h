// A second reader of exchange files, which goes char by char through the whole text and shares no
// code with the first. Slow and obvious.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kessel::test::plain {

/// Everything that a reading tells, in order, as event_log() writes it down.
std::vector<std::string> events_of(std::string_view file);

struct Token {
  /// What it is: "#" and "@" for names, "K" for keywords, "I" and "R" for numbers, "S" for strings,
  /// "B" for binaries, "E" for enumerations, "U" for resources; all else stands for itself.
  char kind;
  std::string text;
  bool operator==(const Token&) const = default;
};

/// The tokens of `text` (ISO 10303-21, 6); nothing where a char is in none.
std::optional<std::vector<Token>> tokens_of(std::string_view text);

/// Whether `file` is an exchange file by the grammar of ISO 10303-21, edition 3.
bool is_legal(std::string_view file);

/// The UTF-8 text of a legal string literal without `\S\` of other pages than ISO 8859-1.
std::string value_of(std::string_view literal);

}  // namespace Kessel::test::plain
