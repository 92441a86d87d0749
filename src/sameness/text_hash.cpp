#include "sameness/text_hash.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string>

#include "exchange/characters.h"
#include "exchange/digits.h"
#include "exchange/lexer.h"
#include "exchange/string_value.h"
#include "instances/collectors.h"
#include "sameness/hash.h"

namespace Kessel::Sameness {

namespace {

using Exchange::Lexer;
using Exchange::Word;
using Exchange::WordKind;

/// A number that is read off the front of a text (ISO 10303-21, 6.4.1 and 6.4.2).
struct Number {
  std::uint64_t hash = 0;
  std::size_t length = 0;  // 0 for no number
};

/// The digits in front of an exponent, and the point among them.
class Mantissa {
 public:
  /// Reads them from `text`, from `at` on, which moves behind them.
  Mantissa(std::string_view text, std::size_t& at) {
    const std::size_t begin = at;
    take_digits(text, at);
    has_point_ = at < text.size() && text[at] == '.';
    magnitude_ = significant_;
    if (has_point_) {
      const auto point = static_cast<std::int64_t>(at++);
      take_digits(text, at);
      // Zeros that stand between the point and the first digit that is none.
      if (magnitude_ == 0) magnitude_ = point + 1 + significant_ - static_cast<std::int64_t>(at);
    }
    text_ = text.substr(begin, at - begin);
  }

  bool has_point() const { return has_point_; }
  bool is_empty() const { return text_.size() == (has_point_ ? 1 : 0); }
  bool is_zero() const { return significant_ == 0; }
  /// The digits from the first to the last that is no zero: as a number where 64 bits hold it.
  std::uint64_t value() const {
    if (significant_ > IN_ONE_WORD) return long_value();
    std::uint64_t value = value_;
    while (value % 10 == 0) value /= 10;
    return value;
  }
  /// How many places the first digit that is no zero stands in front of the point.
  std::int64_t magnitude() const { return magnitude_; }

 private:
  static constexpr std::int64_t IN_ONE_WORD = 19;

  void take_digits(std::string_view text, std::size_t& at) {
    if (significant_ == 0) {
      while (at < text.size() && text[at] == '0') ++at;
    }
    const std::size_t first = at;
    while (text.size() - at >= 8 && Exchange::take_eight_digits(text.data() + at, value_)) at += 8;
    for (; at < text.size() && Exchange::is_digit(text[at]); ++at) {
      value_ = value_ * 10 + static_cast<std::uint64_t>(text[at] - '0');
    }
    significant_ += static_cast<std::int64_t>(at - first);
  }

  std::uint64_t long_value() const {
    std::string digits(text_);
    std::erase(digits, '.');
    digits.erase(0, digits.find_first_not_of('0'));
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.size() > IN_ONE_WORD) return hash_of(digits);
    std::uint64_t value = 0;
    for (const char c : digits) value = value * 10 + static_cast<std::uint64_t>(c - '0');
    return value;
  }

  std::string_view text_;
  std::uint64_t value_ = 0;       // of all digits, where 64 bits hold it
  std::int64_t significant_ = 0;  // digits from the first on that is no zero
  std::int64_t magnitude_ = 0;
  bool has_point_ = false;
};

/// Reads on behind "E". Exponents beyond all reason count as one.
bool take_exponent(std::string_view text, std::size_t& at, std::int64_t& exponent) {
  constexpr std::int64_t MOST = std::int64_t{1} << 40;
  const bool is_negative = at < text.size() && text[at] == '-';
  if (is_negative || (at < text.size() && text[at] == '+')) ++at;
  const std::size_t first = at;
  std::int64_t written = 0;
  for (; at < text.size() && Exchange::is_digit(text[at]); ++at) {
    written = std::min(written * 10 + (text[at] - '0'), MOST);
  }
  exponent = is_negative ? -written : written;
  return at > first;
}

Number take_number(std::string_view text) {
  std::size_t at = 0;
  const bool is_negative = text[0] == '-';
  if (is_negative || text[0] == '+') ++at;
  const Mantissa mantissa(text, at);
  if (mantissa.is_empty()) return {};
  bool is_real = mantissa.has_point();
  std::int64_t exponent = 0;
  if (at < text.size() && (text[at] | 0x20) >= 'd' && (text[at] | 0x20) <= 'e') {
    is_real = true;
    if (!take_exponent(text, ++at, exponent)) return {};
  }
  const std::uint64_t kind = is_real ? 1 : 0;
  if (mantissa.is_zero()) return {combined(0, kind), at};
  const auto magnitude = static_cast<std::uint64_t>(exponent + mantissa.magnitude());
  return {combined(mantissa.value(), magnitude * 4 + (is_negative ? 2 : 0) + kind), at};
}

/// A word that has no text of its own worth hashing.
constexpr std::uint64_t hash_of(WordKind kind) {
  return mixed(static_cast<std::uint64_t>(kind) + 1);
}

constexpr std::uint64_t INSTANCE = hash_of(WordKind::instance);

/// Of a string without apostrophes, "\" and codes above those of ASCII in it, without decoding it.
std::uint64_t plain_string_hash(std::string_view body) {
  return Sameness::hash_of(body, hash_of(WordKind::string));
}

std::uint64_t word_hash(const Word& word) {
  switch (word.kind) {
    case WordKind::string:
      return plain_string_hash(Exchange::string_value(word.text));
    case WordKind::integer:
    case WordKind::real:
      return number_hash(word.text);
    case WordKind::instance:
    case WordKind::open:
    case WordKind::close:
    case WordKind::comma:
    case WordKind::unset:
    case WordKind::derived:
      return hash_of(word.kind);
    default:
      return Sameness::hash_of(word.text, hash_of(word.kind));
  }
}

/// How bytes are read without a lexer.
enum class Byte : std::uint8_t { other, blank, sign, digit, letter, hash, apostrophe };

constexpr std::array<Byte, 256> byte_table() {
  std::array<Byte, 256> table{};
  for (std::size_t i = 0; i < table.size(); ++i) {
    const auto c = static_cast<char>(i);
    if (Exchange::is_blank(c)) table[i] = Byte::blank;
    if (Exchange::is_digit(c) || c == '-' || c == '+') table[i] = Byte::digit;
    if (Exchange::begins_keyword(c)) table[i] = Byte::letter;
  }
  for (const char c : {'(', ')', ',', '$', '*'}) table[static_cast<std::size_t>(c)] = Byte::sign;
  table['#'] = Byte::hash;
  table['\''] = Byte::apostrophe;
  return table;
}

constexpr std::array<Byte, 256> BYTES = byte_table();

constexpr Byte byte_of(char c) {
  return BYTES[static_cast<unsigned char>(c)];
}

constexpr std::uint64_t sign_hash(char c) {
  switch (c) {
    case '(':
      return hash_of(WordKind::open);
    case ')':
      return hash_of(WordKind::close);
    case ',':
      return hash_of(WordKind::comma);
    case '$':
      return hash_of(WordKind::unset);
    default:
      return hash_of(WordKind::derived);
  }
}

constexpr std::array<std::uint64_t, 128> sign_hashes() {
  std::array<std::uint64_t, 128> hashes{};
  for (const char c : {'(', ')', ',', '$', '*'}) hashes[static_cast<std::size_t>(c)] = sign_hash(c);
  return hashes;
}

constexpr std::array<std::uint64_t, 128> SIGN_HASHES = sign_hashes();

/// Gives the hashes of the words of a text. What nearly all records consist of is read here; for
/// the rest a lexer is asked, which sees the same words.
class WordHashes {
 public:
  explicit WordHashes(std::string_view text) : text_(text) {}

  /// False at the end.
  bool next(std::uint64_t& hash) {
    while (at_ < text_.size() && byte_of(text_[at_]) == Byte::blank) ++at_;
    if (at_ >= text_.size()) return false;
    return take_known(hash) || take_any(hash);
  }

 private:
  bool take_known(std::uint64_t& hash) {
    const char c = text_[at_];
    switch (byte_of(c)) {
      case Byte::sign:
        hash = SIGN_HASHES[static_cast<std::size_t>(c)];
        ++at_;
        return true;
      case Byte::digit:
        return take_known_number(hash);
      case Byte::letter:
        return take_keyword(hash);
      case Byte::hash:
        return take_instance(hash);
      case Byte::apostrophe:
        return take_plain_string(hash);
      default:
        return false;
    }
  }

  bool take_known_number(std::uint64_t& hash) {
    const Number number = take_number(text_.substr(at_));
    const std::size_t end = at_ + number.length;
    const bool is_whole = end == text_.size() || text_[end] == ',' || text_[end] == ')' ||
                          Exchange::is_blank(text_[end]);
    if (number.length == 0 || !is_whole) return false;
    hash = number.hash;
    at_ = end;
    return true;
  }

  bool take_keyword(std::uint64_t& hash) {
    std::size_t end = at_ + 1;
    while (end < text_.size() && Exchange::is_in_keyword(text_[end])) ++end;
    hash = Sameness::hash_of(text_.substr(at_, end - at_), hash_of(WordKind::keyword));
    at_ = end;
    return true;
  }

  bool take_instance(std::uint64_t& hash) {
    std::size_t end = at_ + 1;
    while (end < text_.size() && Exchange::is_digit(text_[end])) ++end;
    if (end == at_ + 1) return false;
    hash = INSTANCE;
    at_ = end;
    return true;
  }

  bool take_plain_string(std::uint64_t& hash) {
    std::size_t end = at_ + 1;
    for (; end < text_.size() && text_[end] != '\''; ++end) {
      if (text_[end] < ' ' || text_[end] > '~' || text_[end] == '\\') return false;
    }
    if (end + 1 >= text_.size() || text_[end + 1] == '\'') return false;
    hash = plain_string_hash(text_.substr(at_ + 1, end - at_ - 1));
    at_ = end + 1;
    return true;
  }

  bool take_any(std::uint64_t& hash) {
    Lexer lexer(text_, at_);
    const Word word = lexer.next();
    at_ = lexer.position();
    if (word.kind == WordKind::end) return false;
    hash = word_hash(word);
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

/// One step of the hash of a text; words are mixed well enough for a light one.
constexpr std::uint64_t behind(std::uint64_t hash, std::uint64_t word) {
  return (std::rotl(hash, 23) ^ word) * 0x9E37'79B9'7F4A'7C15;
}

std::uint64_t text_hash_with_sets(std::string_view body, std::span<const std::string_view> sets) {
  std::uint64_t hash = 0;
  std::uint64_t in_sets = 0;  // what stands there besides instances, in any order
  Lexer lexer(body);
  for (Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
    const bool is_in_set = std::any_of(sets.begin(), sets.end(), [&](std::string_view set) {
      return word.text.data() >= set.data() && word.text.data() < set.data() + set.size();
    });
    if (!is_in_set) {
      hash = behind(hash, word_hash(word));
    } else if (word.kind != WordKind::instance && word.kind != WordKind::comma) {
      in_sets += mixed(word_hash(word));
    }
  }
  return combined(hash, in_sets);
}

std::uint64_t words_hash(std::string_view text, std::uint64_t so_far) {
  std::uint64_t hash = so_far;
  std::uint64_t word = 0;
  for (WordHashes words(text); words.next(word);) hash = behind(hash, word);
  return combined(hash, 0);
}

}  // namespace

std::uint64_t number_hash(std::string_view literal) {
  const Number number = literal.empty() ? Number() : take_number(literal);
  return number.length == literal.size() ? number.hash : Sameness::hash_of(literal, 1);
}

std::uint64_t text_hash(std::string_view body, std::span<const std::string_view> sets) {
  return sets.empty() ? words_hash(body, 0) : text_hash_with_sets(body, sets);
}

RecordHash::OfType RecordHash::of_type(TypeId type) const {
  OfType known;
  known.is_known = true;
  known.collects = types_.collects(type);
  if (known.collects || types_.is_complex(type)) return known;
  known.keyword = types_.name(type);
  known.hash = behind(0, Sameness::hash_of(known.keyword, hash_of(WordKind::keyword)));
  return known;
}

std::uint64_t RecordHash::of(TypeId type, std::string_view body) {
  if (type >= known_.size()) known_.resize(type + 1);
  OfType& known = known_[type];
  if (!known.is_known) known = of_type(type);
  if (known.collects) return text_hash(body, collected_lists(body));
  if (known.keyword.empty() || !body.starts_with(known.keyword)) return text_hash(body);
  return words_hash(body.substr(known.keyword.size()), known.hash);
}

}  // namespace Kessel::Sameness
