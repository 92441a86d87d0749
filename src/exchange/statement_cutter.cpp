#include "exchange/statement_cutter.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <bit>
#include <cstring>

#include "exchange/characters.h"
#include "exchange/literals.h"

namespace Kessel::Exchange {

namespace {

/// Zeros behind what was read, so that whole words and blocks can be looked at.
constexpr std::size_t PADDING = 64;

std::unique_ptr<char[]> make_buffer(std::size_t capacity) {
  return std::make_unique_for_overwrite<char[]>(capacity + PADDING);
}

/// The digits at `p`, which moves behind them; 0 where they say more than 2^64-1.
std::uint64_t take_long_number(const char*& p) {
  std::uint64_t value = 0;
  bool is_too_large = false;
  for (; is_digit(*p); ++p) {
    const auto digit = static_cast<std::uint64_t>(*p - '0');
    is_too_large |= value > (~std::uint64_t{0} - digit) / 10;
    value = value * 10 + digit;
  }
  return is_too_large ? 0 : value;
}

/// The same; at least eight bytes behind `p` can be read.
///
/// Fast path for up to seven digits, which is nearly every number: eight bytes are taken at once,
/// what is no digit is shifted out, and the digits are summed up in pairs, fours and eights.
inline std::uint64_t take_number(const char*& p) {
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::uint64_t EACH_BYTE = 0x0101010101010101;
    std::uint64_t word = 0;
    std::memcpy(&word, p, 8);
    word ^= EACH_BYTE * '0';
    // What a byte carries over can only change bytes behind it, and it is no digit itself.
    const std::uint64_t other = ((word + EACH_BYTE * 0x76) | word) & (EACH_BYTE * 0x80);
    if (other != 0) {
      const int digits = std::countr_zero(other) >> 3;
      if (digits == 0) return 0;
      word <<= 64 - 8 * digits;
      word = word * 10 + (word >> 8);
      p += digits;
      constexpr std::uint64_t PAIRS = 0x000000FF000000FF;
      return ((word & PAIRS) * 0x000F424000000064 + ((word >> 16) & PAIRS) * 0x0000271000000001) >>
                 32 &
             0xFFFFFFFF;
    }
  }
  return take_long_number(p);
}

}  // namespace

StatementCutter::StatementCutter(std::istream& in, std::uint64_t position, std::uint64_t max_held,
                                 std::size_t block_size)
    : in_(in),
      buffer_(make_buffer(block_size)),
      capacity_(block_size),
      ended_(!in.good()),
      max_held_(max_held),
      passed_(position) {
  std::memset(buffer_.get(), 0, PADDING);
}

/// Reads behind what is left in the buffer, which moves to the front first and grows when it fills
/// the buffer. Returns whether the buffer changed, after which no pointer into it is good; it does
/// not where the input has ended, or no more may be held.
bool StatementCutter::refill() {
  if (ended_) return false;
  const std::size_t left = end_ - begin_;
  if (left == capacity_) {
    if (left >= max_held_) return false;
    const auto more = static_cast<std::size_t>(std::min<std::uint64_t>(left, max_held_ - left + 1));
    auto larger = make_buffer(capacity_ + more);
    std::memcpy(larger.get(), buffer_.get() + begin_, left);
    buffer_ = std::move(larger);
    capacity_ += more;
  } else {
    std::memmove(buffer_.get(), buffer_.get() + begin_, left);
  }
  passed_ += begin_;
  begin_ = 0;
  in_.read(buffer_.get() + left, static_cast<std::streamsize>(capacity_ - left));
  const auto count = static_cast<std::size_t>(in_.gcount());
  end_ = left + count;
  std::memset(buffer_.get() + end_, 0, PADDING);
  ended_ = count == 0;
  return true;
}

std::string_view StatementCutter::peek(std::size_t most) {
  while (end_ - begin_ < most && refill()) {
  }
  return {buffer_.get() + begin_, std::min(most, end_ - begin_)};
}

/// Where the blanks, comments and print control directives at `p` end. `is_open` tells that a
/// comment does not end; then it is that comment's beginning.
inline const char* StatementCutter::find_lead_end(const char* p, bool& is_open) const {
  const char* const end = buffer_.get() + end_;
  for (;;) {
    while (is_blank(*p)) ++p;  // Ends at the padding.
    if (*p == '\\' && (p[1] == 'N' || p[1] == 'F') && p[2] == '\\') {
      p += 3;
      continue;
    }
    if (*p != '/' || p[1] != '*') return p;
    const std::string_view rest(p, static_cast<std::size_t>(end - p));
    const std::size_t close = rest.find("*/", 2);
    if (close == std::string_view::npos) {
      is_open = true;
      return p;
    }
    p += close + 2;
  }
}

Cut StatementCutter::next(Scrutiny scrutiny) {
  for (;;) {
    const char* const front = buffer_.get() + begin_;
    bool is_open = false;
    const char* const first = find_lead_end(front, is_open);
    const char* at = first;
    begin_statement();
    Scan scanned = Scan::more;
    if (!is_open) {
      scanned = knows_resources_             ? scan_plainly(first, at)
                : scrutiny == Scrutiny::full ? scan<true>(first, at)
                                             : scan<false>(first, at);
    }
    if (scanned != Scan::closed && refill()) continue;

    const char* const end = scanned == Scan::closed ? at : buffer_.get() + end_;
    const auto length = [](const char* a, const char* b) {
      return static_cast<std::size_t>(b - a);
    };
    statement_.lead = {front, length(front, first)};
    statement_.text = without_blanks_behind({first, length(first, end)});
    statement_.offset = offset() + statement_.lead.size();
    if (scanned != Scan::closed && !ended_) return Cut::too_long;
    begin_ = length(buffer_.get(), end) + (scanned == Scan::closed ? 1 : 0);
    if (scanned == Scan::closed) return Cut::statement;
    if (is_open || scanned == Scan::in_comment) return Cut::unclosed_comment;
    if (scanned == Scan::in_string) return Cut::unclosed_string;
    return statement_.text.empty() ? Cut::end : Cut::unclosed_text;
  }
}

void StatementCutter::begin_statement() {
  mentions_.clear();
  statement_.has_too_large_number = false;
  statement_.depth = 0;
  statement_.takes_in_record = false;
  statement_.has_backslash = false;
  statement_.has_high_bytes = false;
  statement_.is_plain = true;
}

/// Takes the instance name at `p` in the statement that begins at `first`.
template <bool full>
inline void StatementCutter::mention(const char* first, const char*& p) {
  if (full && statement_.depth <= 0 && p != first) statement_.takes_in_record = true;
  const char* const begin = ++p;
  const std::uint64_t number = take_number(p);
  // "#NAME" is a constant's name (ISO 10303-21, 6.4.4.4), and stays as it is.
  statement_.is_plain &= number != 0;
  if (p == begin) return;
  mentions_.push_back({number, begin, p});
  if (number == 0) {
    statement_.has_too_large_number |= std::any_of(begin, p, [](char c) { return c != '0'; });
  }
}

/// Notes which bytes stand in a text that is passed over.
void StatementCutter::look_at(const char* from, const char* to) {
  for (; from < to; ++from) {
    statement_.has_backslash |= *from == '\\';
    statement_.has_high_bytes |= (*from & 0x80) != 0;
  }
}

/// Looks for the ";" byte by byte; the way in sections with resources.
StatementCutter::Scan StatementCutter::scan_plainly(const char* from, const char*& at) {
  const char* const end = buffer_.get() + end_;
  for (const char* p = from; p < end;) {
    const char* const here = p;
    const std::string_view rest(p, static_cast<std::size_t>(end - p));
    if (*p == ';') {
      at = p;
      return Scan::closed;
    }
    if (*p == '\'') {
      const std::size_t behind = behind_string(rest, 0);
      if (behind == std::string_view::npos) return Scan::in_string;
      statement_.is_plain &= rest.substr(0, behind).find("\\'") == std::string_view::npos;
      p += behind;
    } else if (begins_comment(rest, 0)) {
      const std::size_t close = rest.find("*/", 2);
      if (close == std::string_view::npos) return Scan::in_comment;
      statement_.is_plain = false;
      p += close + 2;
    } else if (*p == '<' && knows_resources_) {
      const std::size_t close = rest.find('>');
      if (close == std::string_view::npos) return Scan::more;
      p += close + 1;
    } else if (*p == '#') {
      mention<true>(from, p);
    } else {
      if (*p == '(') ++statement_.depth;
      if (*p == ')') --statement_.depth;
      ++p;
    }
    look_at(here, p);
  }
  return Scan::more;
}

#if defined(__SSE2__)

namespace {

__m128i all(char c) {
  return _mm_set1_epi8(c);
}

/// A bit for each of the sixteen bytes of `block` that is one of "#", "'", "/", ";", and, for full
/// scrutiny, "(" or ")". A "+" may be among them, too: it differs from "#" in one bit only, as "'"
/// and "/" do.
template <bool full>
unsigned marks_in(__m128i block) {
  const __m128i cleared = _mm_and_si128(block, all(static_cast<char>(~0x0C)));
  __m128i marks = _mm_or_si128(_mm_cmpeq_epi8(cleared, all('#')), _mm_cmpeq_epi8(block, all(';')));
  if constexpr (full) {
    const __m128i even = _mm_and_si128(block, all(static_cast<char>(~0x01)));
    marks = _mm_or_si128(marks, _mm_cmpeq_epi8(even, all('(')));
  }
  return static_cast<unsigned>(_mm_movemask_epi8(marks));
}

}  // namespace

/// The same as scan_plainly(), from mark to mark.
///
/// Fast path: the marks of sixteen bytes are found at once. Inside a string all but the apostrophe
/// are passed over; a doubled one closes it and opens it again, which comes to the same.
template <bool full>
StatementCutter::Scan StatementCutter::scan(const char* from, const char*& at) {
  const char* const end = buffer_.get() + end_;
  const char* string = nullptr;  // Where the string begins that `block` is in.
  __m128i backslashes = _mm_setzero_si128();
  __m128i high = _mm_setzero_si128();
  for (const char* block = from; block < end;) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
    const char* next_block = block + 16;
    if constexpr (full) {
      backslashes = _mm_or_si128(backslashes, _mm_cmpeq_epi8(bytes, all('\\')));
      high = _mm_or_si128(high, bytes);
    }
    for (unsigned marks = marks_in<full>(bytes); marks != 0; marks &= marks - 1) {
      const char* p = block + std::countr_zero(marks);
      const char c = *p;
      if (string != nullptr) {
        if (c != '\'') continue;
        if (p[-1] != '\\') {
          string = nullptr;
          continue;
        }
        // A backslash in front: the apostrophe may belong to a directive.
        const std::size_t behind =
            behind_string({string, static_cast<std::size_t>(end - string)}, 0);
        if (behind == std::string_view::npos) return Scan::in_string;
        next_block = string + behind;
        statement_.is_plain = false;
        if constexpr (full) look_at(p, next_block);
        string = nullptr;
        break;
      }
      if (c == '\'') {
        string = p;
      } else if (c == '#') {
        mention<full>(from, p);
      } else if (c == ';') {
        if constexpr (full) {
          statement_.has_backslash |= _mm_movemask_epi8(backslashes) != 0;
          statement_.has_high_bytes |= _mm_movemask_epi8(high) != 0;
        }
        at = p;
        return Scan::closed;
      } else if (c == '/') {
        if (p[1] != '*') continue;
        const std::string_view rest(p, static_cast<std::size_t>(end - p));
        const std::size_t close = rest.find("*/", 2);
        if (close == std::string_view::npos) return Scan::in_comment;
        next_block = p + close + 2;
        statement_.is_plain = false;
        if constexpr (full) look_at(p, next_block);
        break;
      } else if (full && c != '+') {
        statement_.depth += c == '(' ? 1 : -1;
      }
    }
    block = next_block;
  }
  return string != nullptr ? Scan::in_string : Scan::more;
}

#else

template <bool full>
StatementCutter::Scan StatementCutter::scan(const char* from, const char*& at) {
  return scan_plainly(from, at);
}

#endif

}  // namespace Kessel::Exchange
