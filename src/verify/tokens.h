// Words of a record: what is compared, and whether they make up a record.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Kessel {

/// One word of a record (ISO 10303-21, 6). White space and comments are none.
struct Token {
  enum class Kind : std::uint8_t {
    reference,  ///< "#" and a number from 1 to 4,294,967,295
    string,     ///< with its apostrophes
    keyword,
    value,  ///< a number, an enumeration value, binary data, "$" or "*"
    mark,   ///< one of ( ) , =
    stray,  ///< no word: a character that begins none, or a string or comment that is not closed
  };
  Kind kind = Kind::stray;
  std::uint32_t number = 0;    ///< of a reference
  std::string_view text = {};  ///< as it stands there

  /// References are the same by their number, all else by the text.
  bool operator==(const Token& other) const;
  bool is(char mark) const { return kind == Kind::mark && text.front() == mark; }
};

/// Takes `text` apart into `tokens`, which is cleared first. Linear in the text.
void take_apart(std::string_view text, std::vector<Token>& tokens);

/// Whether the words are those of an instance (ISO 10303-21, 11.1): a number, "=", and a keyword
/// with its parameters, or several of these in parentheses.
bool is_well_formed(const std::vector<Token>& tokens);

}  // namespace Kessel
