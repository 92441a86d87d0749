#include "sameness/text_hash.h"

#include <algorithm>

#include "exchange/characters.h"
#include "exchange/lexer.h"
#include "exchange/string_value.h"
#include "sameness/hash.h"

namespace Kessel::Sameness {

namespace {

using Exchange::Lexer;
using Exchange::Word;
using Exchange::WordKind;

/// Takes in the digits of a number. Zeros in front and behind say nothing.
class Digits {
 public:
  void add(char digit) {
    if (digit == '0') {
      if (!is_zero()) ++zeros_;
      return;
    }
    for (; zeros_ > 0; --zeros_) push(0);
    push(static_cast<unsigned>(digit - '0'));
  }
  bool is_zero() const { return count_ == 0; }
  /// Those from the first to the last that is no zero.
  std::uint64_t hash() const { return combined(combined(so_far_, last_), count_); }
  /// How many stand behind the first one that is no zero, itself included.
  std::int64_t places() const { return count_ + zeros_; }

 private:
  void push(unsigned digit) {
    constexpr std::int64_t IN_ONE_WORD = 19;
    if (count_ != 0 && count_ % IN_ONE_WORD == 0) {
      so_far_ = combined(so_far_, last_);
      last_ = 0;
    }
    last_ = last_ * 10 + digit;
    ++count_;
  }

  std::uint64_t so_far_ = 0;
  std::uint64_t last_ = 0;
  std::int64_t count_ = 0;
  std::int64_t zeros_ = 0;
};

bool take_sign(std::string_view& text) {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool is_negative = text.front() == '-';
  text.remove_prefix(1);
  return is_negative;
}

/// The exponent behind "E". Those beyond all reason count as one.
bool take_exponent(std::string_view text, std::int64_t& exponent) {
  constexpr std::int64_t MOST = std::int64_t{1} << 40;
  const bool is_negative = take_sign(text);
  if (text.empty()) return false;
  for (const char c : text) {
    if (!Exchange::is_digit(c)) return false;
    exponent = std::min(exponent * 10 + (c - '0'), MOST);
  }
  if (is_negative) exponent = -exponent;
  return true;
}

/// The words that have no text of their own worth hashing.
constexpr std::uint64_t hash_of(WordKind kind) {
  return mixed(static_cast<std::uint64_t>(kind) + 1);
}

std::uint64_t string_hash(std::string_view literal) {
  const std::string_view body = literal.substr(1, literal.size() - 2);
  const bool is_plain = std::all_of(body.begin(), body.end(), [](char c) {
    return c >= ' ' && c <= '~' && c != '\\' && c != '\'';
  });
  const std::uint64_t kind = hash_of(WordKind::string);
  return is_plain ? Sameness::hash_of(body, kind)
                  : Sameness::hash_of(Exchange::string_value(literal), kind);
}

std::uint64_t word_hash(const Word& word) {
  switch (word.kind) {
    case WordKind::string:
      return string_hash(word.text);
    case WordKind::integer:
    case WordKind::real:
      return combined(hash_of(word.kind), number_hash(word.text));
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

}  // namespace

std::uint64_t number_hash(std::string_view literal) {
  std::string_view rest = literal;
  const bool is_negative = take_sign(rest);
  Digits digits;
  std::int64_t exponent = 0;
  bool has_point = false;
  for (; !rest.empty(); rest.remove_prefix(1)) {
    const char c = rest.front();
    if (Exchange::is_digit(c)) {
      digits.add(c);
      if (has_point) --exponent;
    } else if (c == '.' && !has_point) {
      has_point = true;
    } else {
      break;
    }
  }
  if (!rest.empty()) {
    std::int64_t written = 0;
    const bool is_exponent = std::string_view("EeDd").find(rest.front()) != std::string_view::npos;
    if (!is_exponent || !take_exponent(rest.substr(1), written)) {
      return Sameness::hash_of(literal, 1);
    }
    exponent += written;
  }
  if (digits.is_zero()) return mixed(0);
  const auto magnitude = static_cast<std::uint64_t>(exponent + digits.places());
  return combined(combined(digits.hash(), magnitude), is_negative ? 1 : 0);
}

std::uint64_t text_hash(std::string_view body, std::span<const std::string_view> sets) {
  std::uint64_t hash = 0;
  std::uint64_t in_sets = 0;  // what stands there besides instances, in any order
  Lexer lexer(body);
  for (Word word = lexer.next(); word.kind != WordKind::end; word = lexer.next()) {
    const bool is_in_set = std::any_of(sets.begin(), sets.end(), [&](std::string_view set) {
      return word.text.data() >= set.data() && word.text.data() < set.data() + set.size();
    });
    if (!is_in_set) {
      hash = combined(hash, word_hash(word));
    } else if (word.kind != WordKind::instance && word.kind != WordKind::comma) {
      in_sets += mixed(word_hash(word));
    }
  }
  return combined(hash, in_sets);
}

}  // namespace Kessel::Sameness
