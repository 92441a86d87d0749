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
  block_ = nullptr;
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

/// Where the blanks, comments and print control directives at `p`, which is no blank, end.
/// `is_open` tells that a comment does not end; then it is that comment's beginning.
const char* StatementCutter::find_long_lead_end(const char* p, bool& is_open) const {
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
    const char* first = front;
    while (is_blank(*first)) ++first;  // Ends at the padding.
    if (*first == '/' || *first == '\\') {
      first = find_long_lead_end(first, is_open);
      block_ = nullptr;  // There may be marks in it.
    }
    const char* at = first;
    Scan scanned = Scan::more;
    begin_statement();
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
    if (scanned == Scan::closed) {
      begin_ = length(buffer_.get(), end) + 1;
      return Cut::statement;
    }
    if (!ended_) return Cut::too_long;
    begin_ = length(buffer_.get(), end);
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

/// Takes the instance name at `p`, which moves behind it.
[[gnu::always_inline]] inline void StatementCutter::mention(const char*& p) {
  const char* const begin = ++p;
  const std::uint64_t number = take_number(p);
  if (number != 0) {
    mentions_.push_back({number, begin, p});
  } else {
    mention_unusual(begin, p);
  }
}

/// The same for the name whose digits stand at [begin, p), where they say no usable number.
[[gnu::noinline]] void StatementCutter::mention_unusual(const char* begin, const char* p) {
  // "#NAME" is a constant's name (ISO 10303-21, 6.4.4.4), and stays as it is.
  statement_.is_plain = false;
  if (p == begin) return;
  mentions_.push_back({0, begin, p});
  statement_.has_too_large_number |= std::any_of(begin, p, [](char c) { return c != '0'; });
}

/// Notes which bytes stand in a text that is passed over.
void StatementCutter::look_at(const char* from, const char* to) {
  for (; from < to; ++from) {
    statement_.has_backslash |= *from == '\\';
    statement_.has_high_bytes |= (*from & 0x80) != 0;
  }
}

/// Looks for the ";" byte by byte; the way in sections with resources, and past comments.
StatementCutter::Scan StatementCutter::scan_plainly(const char* from, const char*& at) {
  block_ = nullptr;
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
      if (statement_.depth <= 0 && p != from) statement_.takes_in_record = true;
      mention(p);
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

std::uint64_t bits_of(__m128i bytes, int place) {
  return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(bytes))} << (16 * place);
}

/// For each bit the parity of all bits up to it, itself included.
std::uint64_t parities(std::uint64_t bits) {
  for (int distance = 1; distance < 64; distance *= 2) bits ^= bits << distance;
  return bits;
}

}  // namespace

/// Finds the marks in the 64 bytes at `block`: "#", "/", ";" and, for full scrutiny, "(" and ")"
/// outside strings. A "+" may be among them, too: it differs from "#" in one bit only, as "'" and
/// "/" do. So is an apostrophe behind a backslash, which may belong to a directive.
template <bool full>
inline void StatementCutter::find_marks(const char* block) {
  std::uint64_t marks = 0;
  std::uint64_t apostrophes = 0;
  std::uint64_t unusual = 0;
  for (int i = 0; i < 4; ++i) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block) + i);
    const __m128i cleared = _mm_and_si128(bytes, all(static_cast<char>(~0x0C)));
    __m128i found =
        _mm_or_si128(_mm_cmpeq_epi8(cleared, all('#')), _mm_cmpeq_epi8(bytes, all(';')));
    if constexpr (full) {
      const __m128i even = _mm_and_si128(bytes, all(static_cast<char>(~0x01)));
      found = _mm_or_si128(found, _mm_cmpeq_epi8(even, all('(')));
      unusual |= bits_of(_mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, all('\\'))), i);
    }
    marks |= bits_of(found, i);
    apostrophes |= bits_of(_mm_cmpeq_epi8(bytes, all('\'')), i);
  }
  if ((apostrophes | in_string_) != 0) {
    if constexpr (!full) {
      for (int i = 0; i < 4; ++i) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block) + i);
        unusual |= bits_of(_mm_cmpeq_epi8(bytes, all('\\')), i);
      }
    }
    const std::uint64_t strings = parities(apostrophes) ^ in_string_;
    in_string_ = 0 - (strings >> 63);
    const std::uint64_t before = block_ != nullptr && block[-1] == '\\' ? 1 : 0;
    marks = (marks & ~apostrophes & ~strings) | (apostrophes & (unusual << 1 | before));
  }
  block_ = block;
  marks_ = marks;
  unusual_ = unusual;
}

/// The same as scan_plainly(), from mark to mark.
///
/// Fast path: the marks of sixty-four bytes are found at once, and what stands behind the ";" is
/// the next statement's. What needs a closer look, a comment or an apostrophe in a directive, has
/// its whole statement looked at byte by byte.
template <bool full>
StatementCutter::Scan StatementCutter::scan(const char* from, const char*& at) {
  const char* const end = buffer_.get() + end_;
  if (block_ == nullptr || from - block_ >= 64 || has_full_marks_ != full) {
    if (from >= end) return Scan::more;
    block_ = nullptr;
    in_string_ = 0;
    has_full_marks_ = full;
    find_marks<full>(from);
  }
  int depth = 0;
  std::uint64_t unusual = unusual_;
  for (;;) {
    for (std::uint64_t marks = marks_; marks != 0;) {
      const char* p = block_ + std::countr_zero(marks);
      marks &= marks - 1;
      const char c = *p;
      if (c == '#') {
        if (full && depth <= 0 && p != from) statement_.takes_in_record = true;
        mention(p);
      } else if (full && (c & ~1) == '(') {
        depth += c == '(' ? 1 : -1;
      } else if (c == ';') {
        marks_ = marks;
        statement_.depth = depth;
        if (full && unusual != 0) look_at(from, p);
        at = p;
        return Scan::closed;
      } else if ((c == '/' && p[1] == '*') || (c == '\'' && p[-1] == '\\')) {
        begin_statement();
        return scan_plainly(from, at);
      }
    }
    const char* const next = block_ + 64;
    if (next >= end) break;
    find_marks<full>(next);
    unusual |= unusual_;
  }
  statement_.depth = depth;
  block_ = nullptr;
  return in_string_ != 0 ? Scan::in_string : Scan::more;
}

#else

template <bool full>
StatementCutter::Scan StatementCutter::scan(const char* from, const char*& at) {
  return scan_plainly(from, at);
}

#endif

}  // namespace Kessel::Exchange
