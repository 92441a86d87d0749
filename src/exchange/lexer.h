// Takes texts of an exchange file apart into words (ISO 10303-21, 6).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Kessel::Exchange {

enum class WordKind : std::uint8_t {
  end,          ///< nothing is left
  instance,     ///< #12, leading zeros allowed
  value,        ///< @12
  constant,     ///< #NAME or @NAME
  keyword,      ///< PRODUCT, and !PRODUCT for user-defined ones
  integer,      ///< 12, -3
  real,         ///< 1., 1.E-5
  string,       ///< 'text', with its apostrophes
  binary,       ///< "23B", with its quotes
  enumeration,  ///< .TRUE., with its points
  resource,     ///< <http://...#anchor>, with its brackets
  open,         ///< (
  close,        ///< )
  comma,        ///< ,
  equals,       ///< =
  semicolon,    ///< ;
  unset,        ///< $
  derived,      ///< *
  other,        ///< a byte that begins none of these, or a literal that nothing closes
};

struct Word {
  WordKind kind = WordKind::end;
  std::string_view text;  ///< as it stands, a view into the text that is read
};

/// Gives the words of a text one after the other and passes over blanks, comments and print control
/// directives (`\N\`, `\F\`) between them. Never fails: every byte is in a word or between two.
class Lexer {
 public:
  /// Reads `text`, which must outlive the lexer and the words, from position `at` on.
  explicit Lexer(std::string_view text, std::size_t at = 0) : text_(text), at_(at) {}

  /// The next word; of the kind `end` where there is none, however often it is asked.
  Word next();

  /// The position behind the last word.
  std::size_t position() const { return at_; }

 private:
  Word take(WordKind kind, std::size_t length);
  Word take_name(WordKind number);
  Word take_number();
  Word take_enclosed(WordKind kind, char last, bool (*is_member)(char));

  std::string_view text_;
  std::size_t at_;
};

/// The number of an instance name "#12" or "@12"; 0 where it is above 2^64-1 or no digit follows.
std::uint64_t number_in(std::string_view name);

}  // namespace Kessel::Exchange
