#include "exchange/statement_cutter.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <bit>
#include <cstring>

#include "exchange/characters.h"
#include "exchange/digits.h"
#include "exchange/literals.h"

namespace Kessel::Exchange {

namespace {

/// Zeros behind what was read, so that whole words and blocks can be looked at.
constexpr std::size_t PADDING = 64;

/// So many at most are among 64 bytes, even where one begins with the last of them.
constexpr std::size_t NAMES_IN_BLOCK = 33;

std::unique_ptr<char[]> make_buffer(std::size_t capacity) {
  return std::make_unique_for_overwrite<char[]>(capacity + PADDING);
}

}  // namespace

StatementCutter::StatementCutter(std::istream& in, std::uint64_t position, std::uint64_t max_held,
                                 std::size_t block_size, Scrutiny scrutiny)
    : in_(in),
      buffer_(make_buffer(block_size)),
      capacity_(block_size),
      at_(buffer_.get()),
      end_(at_),
      ended_(!in.good()),
      scrutiny_(scrutiny),
      max_held_(max_held),
      passed_(position),
      names_(4 * NAMES_IN_BLOCK),
      last_name_(names_.data()) {
  std::memset(buffer_.get(), 0, PADDING);
  note_room_for_names();
}

/// Reads behind what is left in the buffer, which moves to the front first and grows when it fills
/// the buffer. Returns whether the buffer changed, after which no pointer into it is good; it does
/// not where the input has ended, or no more may be held.
bool StatementCutter::refill() {
  if (ended_) return false;
  block_ = nullptr;
  const auto left = static_cast<std::size_t>(end_ - at_);
  passed_ = offset();
  if (left == capacity_) {
    if (left >= max_held_) return false;
    const auto more = static_cast<std::size_t>(std::min<std::uint64_t>(left, max_held_ - left + 1));
    auto larger = make_buffer(capacity_ + more);
    std::memcpy(larger.get(), at_, left);
    buffer_ = std::move(larger);
    capacity_ += more;
  } else {
    std::memmove(buffer_.get(), at_, left);
  }
  char* const behind = buffer_.get() + left;
  in_.read(behind, static_cast<std::streamsize>(capacity_ - left));
  const auto count = static_cast<std::size_t>(in_.gcount());
  at_ = buffer_.get();
  end_ = behind + count;
  std::memset(behind + count, 0, PADDING);
  ended_ = count == 0;
  return true;
}

std::string_view StatementCutter::peek(std::size_t most) {
  while (static_cast<std::size_t>(end_ - at_) < most && refill()) {
  }
  return {at_, std::min(most, static_cast<std::size_t>(end_ - at_))};
}

/// Where the blanks, comments and print control directives at `p`, which is no blank, end.
/// `is_open` tells that a comment does not end; then it is that comment's beginning.
const char* StatementCutter::find_long_lead_end(const char* p, bool& is_open) const {
  for (;;) {
    while (is_blank(*p)) ++p;  // Ends at the padding.
    if (*p == '\\' && (p[1] == 'N' || p[1] == 'F') && p[2] == '\\') {
      p += 3;
      continue;
    }
    if (*p != '/' || p[1] != '*') return p;
    const std::string_view rest(p, static_cast<std::size_t>(end_ - p));
    const std::size_t behind = end_of_comment(rest, 0);
    if (behind == std::string_view::npos) {
      is_open = true;
      return p;
    }
    p += behind;
  }
}

bool StatementCutter::pass_over_blanks() {
  constexpr std::ptrdiff_t LONGEST_BEGINNING = 3;  // of a print control directive
  block_ = nullptr;
  for (;;) {
    bool is_open = false;
    at_ = find_long_lead_end(at_, is_open);
    if (!is_open && end_ - at_ >= LONGEST_BEGINNING) return true;
    if (!refill()) return at_ < end_ && !(is_open && ended_);
  }
}

namespace {

std::string_view between(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

/// Nothing is known of the statement's text yet.
void clear(Statement& statement) {
  statement.has_too_large_number = false;
  statement.takes_in_record = false;
  statement.has_backslash = false;
  statement.has_high_bytes = false;
  statement.is_plain = true;
}

}  // namespace

template <bool full>
Cut StatementCutter::take(Statement& statement) {
  for (;;) {
    bool is_open = false;
    const char* first = at_;
    while (is_blank(*first)) ++first;  // Ends at the padding.
    if (*first == '/' || *first == '\\') [[unlikely]] {
      first = find_long_lead_end(first, is_open);
      block_ = nullptr;  // There may be marks in it.
    }
    clear(statement);
    last_name_ = names_.data();
    const char* at = first;
    Scan scanned = Scan::in_comment;
    if (!is_open) {
      scanned =
          knows_resources_ ? scan_plainly(statement, first, at) : scan<full>(statement, first, at);
    }
    if (scanned != Scan::closed) [[unlikely]] {
      if (refill()) continue;
      at = end_;
    }
    statement.lead = between(at_, first);
    statement.text = without_blanks_behind(between(first, at));
    statement.offset = offset_of(first);
    if (scanned != Scan::closed) [[unlikely]]
      return not_closed(scanned, statement);
    at_ = at + 1;
    return Cut::statement;
  }
}

/// What became of the last statement, which nothing closes.
Cut StatementCutter::not_closed(Scan scanned, Statement& statement) {
  if (!ended_) return Cut::too_long;
  at_ = end_;
  if (scanned == Scan::in_comment) return Cut::unclosed_comment;
  if (scanned == Scan::in_string) return Cut::unclosed_string;
  return statement.text.empty() ? Cut::end : Cut::unclosed_text;
}

/// Takes the instance name at `p`, which moves behind it, to `last`, which moves on.
[[gnu::always_inline]] inline void StatementCutter::take_name(const char*& p, Mention*& last,
                                                              Statement& statement) {
  const char* const begin = ++p;
  const std::uint64_t number = take_number(p);
  *last = {number, begin, p};
  if (number != 0) [[likely]] {
    ++last;
  } else {
    last = take_unusual_name(last, statement);
  }
}

/// The same for a name without a usable number, which stands at `last` already.
[[gnu::noinline]] Mention* StatementCutter::take_unusual_name(Mention* last, Statement& statement) {
  // "#NAME" is a constant's name (ISO 10303-21, 6.4.4.4), and stays as it is.
  statement.is_plain = false;
  if (last->begin == last->end) return last;
  statement.has_too_large_number |=
      std::any_of(last->begin, last->end, [](char c) { return c != '0'; });
  return last + 1;
}

void StatementCutter::note_room_for_names() {
  last_with_room_ = names_.data() + names_.size() - NAMES_IN_BLOCK - 1;
}

/// Makes room for the names that one more block may have, and one. Returns where `last` is then.
[[gnu::noinline]] Mention* StatementCutter::make_room_for_names(Mention* last) {
  const auto count = static_cast<std::size_t>(last - names_.data());
  names_.resize(2 * names_.size());
  note_room_for_names();
  return names_.data() + count;
}

namespace {

/// Notes which bytes stand in a text that is passed over.
void look_at(const char* from, const char* to, Statement& statement) {
  for (; from < to; ++from) {
    statement.has_backslash |= *from == '\\';
    statement.has_high_bytes |= (*from & 0x80) != 0;
  }
}

}  // namespace

/// Looks for the ";" byte by byte; the way in sections with resources, and past comments.
StatementCutter::Scan StatementCutter::scan_plainly(Statement& statement, const char* from,
                                                    const char*& at) {
  block_ = nullptr;
  statement.depth = 0;
  statement.open = from;
  Scan scanned = Scan::more;
  Mention* last = names_.data();
  for (const char* p = from; p < end_;) {
    const char* const here = p;
    const std::string_view rest = between(p, end_);
    if (*p == ';') {
      at = p;
      scanned = Scan::closed;
      break;
    }
    if (*p == '\'') {
      const std::size_t behind = behind_string(rest, 0);
      if (behind == std::string_view::npos) {
        scanned = Scan::in_string;
        break;
      }
      statement.is_plain &= rest.substr(0, behind).find("\\'") == std::string_view::npos;
      p += behind;
    } else if (begins_comment(rest, 0)) {
      const std::size_t behind = end_of_comment(rest, 0);
      if (behind == std::string_view::npos) {
        scanned = Scan::in_comment;
        break;
      }
      statement.is_plain = false;
      p += behind;
    } else if (*p == '<' && knows_resources_) {
      const std::size_t close = rest.find('>');
      if (close == std::string_view::npos) break;
      p += close + 1;
    } else if (*p == '#') {
      if (statement.depth <= 0 && p != from) statement.takes_in_record = true;
      if (last > last_with_room_) last = make_room_for_names(last);
      take_name(p, last, statement);
    } else {
      if (*p == '(' && ++statement.depth == 1) statement.open = p;
      if (*p == ')') --statement.depth;
      ++p;
    }
    look_at(here, p, statement);
  }
  last_name_ = last;
  return scanned;
}

#if defined(__SSE2__)

namespace {

__m128i all(char c) {
  return _mm_set1_epi8(c);
}

/// 64 bytes at once.
struct Bytes {
  explicit Bytes(const char* p) {
    for (int i = 0; i < 4; ++i) {
      parts[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p) + i);
    }
  }

  /// A bit for each part's byte in which the highest bit of what `look` makes of it is set.
  template <class Look>
  std::uint64_t bits(Look look) const {
    const auto of = [&](int i) {
      return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(look(parts[i])))} << (16 * i);
    };
    return of(0) | of(1) | of(2) | of(3);
  }

  /// Whether it is set for any.
  template <class Look>
  bool has(Look look) const {
    return _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(look(parts[0]), look(parts[1])),
                                          _mm_or_si128(look(parts[2]), look(parts[3])))) != 0;
  }

  __m128i parts[4];
};

/// For each bit the parity of all bits up to it, itself included.
std::uint64_t parities(std::uint64_t bits) {
  for (int distance = 1; distance < 64; distance *= 2) bits ^= bits << distance;
  return bits;
}

}  // namespace

/// Finds the marks in the 64 bytes at `block`, which may go on from those before: "#", "/", ";"
/// and, for full scrutiny, "(" and ")" outside strings. A "+" may be among them, too: it differs
/// from "#" in one bit only, as "'" and "/" do. So is an apostrophe behind a backslash, which may
/// belong to a directive.
template <bool full>
[[gnu::always_inline]] inline std::uint64_t StatementCutter::find_marks(const char* block,
                                                                        bool goes_on) {
  const Bytes bytes(block);
  std::uint64_t marks = bytes.bits([](__m128i part) {
    const __m128i cleared = _mm_and_si128(part, all(static_cast<char>(~0x0C)));
    const __m128i found =
        _mm_or_si128(_mm_cmpeq_epi8(cleared, all('#')), _mm_cmpeq_epi8(part, all(';')));
    if constexpr (!full) return found;
    const __m128i even = _mm_and_si128(part, all(static_cast<char>(~0x01)));
    return _mm_or_si128(found, _mm_cmpeq_epi8(even, all('(')));
  });
  const std::uint64_t apostrophes =
      bytes.bits([](__m128i part) { return _mm_cmpeq_epi8(part, all('\'')); });
  if constexpr (full) {
    is_unusual_ =
        bytes.has([](__m128i part) { return _mm_or_si128(part, _mm_cmpeq_epi8(part, all('\\'))); });
  }
  if ((apostrophes | in_string_) != 0) {
    const auto is_backslash = [](__m128i part) { return _mm_cmpeq_epi8(part, all('\\')); };
    const std::uint64_t strings = parities(apostrophes) ^ in_string_;
    in_string_ = 0 - (strings >> 63);
    marks &= ~(apostrophes | strings);
    if ((full ? is_unusual_ : bytes.has(is_backslash)) || (apostrophes & 1) != 0) [[unlikely]] {
      const std::uint64_t before = goes_on && block[-1] == '\\' ? 1 : 0;
      marks |= apostrophes & (bytes.bits(is_backslash) << 1 | before);
    }
  }
  return marks;
}

/// The same as scan_plainly(), from mark to mark.
///
/// Fast path: the marks of sixty-four bytes are found at once, and what stands behind the ";" is
/// the next statement's. What needs a closer look, a comment or an apostrophe in a directive, has
/// its whole statement looked at byte by byte.
template <bool full>
[[gnu::always_inline]] inline StatementCutter::Scan StatementCutter::scan(Statement& statement,
                                                                          const char* from,
                                                                          const char*& at) {
  const char* const end = end_;
  const char* block = block_;
  std::uint64_t marks = marks_;
  Mention* last = names_.data();
  if (reinterpret_cast<std::uintptr_t>(from) - reinterpret_cast<std::uintptr_t>(block) >= 64) {
    block = from;
    if (from >= end) return Scan::more;
    in_string_ = 0;
    marks = find_marks<full>(block, false);
  }
  const char* p = from;
  if (*p == '#') {
    marks &= marks - 1;  // No other stands in front.
    take_name(p, last, statement);
  }
  const char* open = from;
  int depth = 0;
  bool is_unusual = is_unusual_;
  for (;;) {
    while (marks != 0) {
      p = block + std::countr_zero(marks);
      marks &= marks - 1;
      const char c = *p;
      if (c == '#') {
        if (full && depth <= 0) statement.takes_in_record = true;
        take_name(p, last, statement);
      } else if (full && c == '(') {
        if (depth == 0) open = p;
        ++depth;
      } else if (full && c == ')') {
        --depth;
      } else if (c == ';') {
        block_ = block;
        marks_ = marks;
        last_name_ = last;
        if constexpr (full) {
          statement.depth = depth;
          statement.open = open;
          if (is_unusual) [[unlikely]]
            look_at(from, p, statement);
        }
        at = p;
        return Scan::closed;
      } else if ((c == '/' && p[1] == '*') || (c == '\'' && p[-1] == '\\')) {
        clear(statement);
        return scan_plainly(statement, from, at);
      }
    }
    block += 64;
    if (block >= end) break;
    if (last > last_with_room_) [[unlikely]]
      last = make_room_for_names(last);
    marks = find_marks<full>(block, true);
    is_unusual |= is_unusual_;
  }
  last_name_ = last;
  block_ = nullptr;
  return in_string_ != 0 ? Scan::in_string : Scan::more;
}

#else

template <bool full>
StatementCutter::Scan StatementCutter::scan(Statement& statement, const char* from,
                                            const char*& at) {
  return scan_plainly(statement, from, at);
}

#endif

// All that they are made of stands above.
template Cut StatementCutter::take<true>(Statement&);
template Cut StatementCutter::take<false>(Statement&);

}  // namespace Kessel::Exchange
