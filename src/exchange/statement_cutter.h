// Cuts an exchange file into statements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace Kessel::Exchange {

/// An instance name "#12" in a statement, outside its strings and comments.
struct Mention {
  std::uint64_t number;  ///< 0 for "#0", and for what is above 2^64-1
  const char* begin;     ///< of the digits, behind the "#"
  const char* end;       ///< of the digits
};

/// What stands in front of a ";". Views into the cutter's buffer.
struct Statement {
  std::string_view lead;     ///< blanks and comments in front, as they stand
  std::string_view text;     ///< without blanks at its ends and without its ";"
  std::uint64_t offset = 0;  ///< of `text`, in bytes from the input's beginning
  /// A number in it is above 2^64-1.
  bool has_too_large_number = false;

  // Known with full scrutiny only.
  /// A "(" outside strings that no other encloses: the last one, if there are several. Else the
  /// text's beginning.
  const char* open = nullptr;
  int depth = 0;  ///< "(" less ")" outside strings and comments
  /// An instance name stands outside all parentheses, and not at its beginning: the statement takes
  /// in a record behind something else.
  bool takes_in_record = false;
  bool has_backslash = false;   ///< perhaps; certainly not where it is false
  bool has_high_bytes = false;  ///< bytes above 127, likewise
  /// Whether the "#" outside apostrophes are just the instance names, each with a number: no
  /// comment, directive with an apostrophe, constant or unusable number is in the way.
  bool is_plain = true;
};

/// How next() ended.
enum class Cut : std::uint8_t {
  statement,         ///< here is the next one
  end,               ///< nothing but blanks and comments is left
  unclosed_text,     ///< the input ended before a ";"; the rest is the statement's text
  unclosed_string,   ///< likewise, inside a string
  unclosed_comment,  ///< likewise, inside a comment; the text may be that comment alone
  too_long,          ///< a statement needs more memory than it may take
};

/// What a reader wants to know of a statement besides its text and the mentions in it.
enum class Scrutiny : std::uint8_t { none, full };

/// Reads an exchange file (ISO 10303-21) from the stream's position on, by blocks, and cuts it at
/// every ";" that is in no string and no comment. The stream must outlive the cutter.
class StatementCutter {
 public:
  static constexpr std::uint64_t NO_LIMIT = ~std::uint64_t{0};
  static constexpr std::size_t BLOCK_SIZE = std::size_t{256} * 1024;

  /// `position` is that of the stream. A statement, with what stands in front of it, may be as long
  /// as `max_held` or a block, whichever is more. `block_size` is not 0; what is cut does not
  /// depend on it.
  explicit StatementCutter(std::istream& in, std::uint64_t position = 0,
                           std::uint64_t max_held = NO_LIMIT, std::size_t block_size = BLOCK_SIZE,
                           Scrutiny scrutiny = Scrutiny::full);

  /// Puts the next statement into `statement`. What it gives is valid until the next call.
  Cut next(Statement& statement) {
    return scrutiny_ == Scrutiny::full ? take<true>(statement) : take<false>(statement);
  }
  /// The instance names in it, in order.
  std::span<const Mention> mentions() const { return {names_.data(), last_name_}; }

  /// From now on `<...>` is a literal (ISO 10303-21, 10 and 11: URIs), as it is in the sections
  /// that name what stands elsewhere.
  void know_resources(bool know) { knows_resources_ = know; }

  /// The first bytes of the input, as many as there are up to `most`; takes none of them.
  std::string_view peek(std::size_t most);
  /// Passes over `count` bytes, which peek() has shown.
  void pass_over(std::size_t count) {
    at_ += count;
    block_ = nullptr;
  }

  /// Passes over the blanks and comments that stand here. Returns whether something else follows.
  bool pass_over_blanks();

  /// The offset behind all that was taken.
  std::uint64_t offset() const { return offset_of(at_); }

 private:
  enum class Scan : std::uint8_t { closed, more, in_string, in_comment };
  template <bool full>
  Cut take(Statement& statement);
  Cut not_closed(Scan scanned, Statement& statement);
  bool refill();
  const char* find_long_lead_end(const char* p, bool& is_open) const;
  template <bool full>
  std::uint64_t find_marks(const char* block, bool goes_on);
  template <bool full>
  Scan scan(Statement& statement, const char* from, const char*& at);
  Scan scan_plainly(Statement& statement, const char* from, const char*& at);
  void take_name(const char*& p, Mention*& last, Statement& statement);
  static Mention* take_unusual_name(Mention* last, Statement& statement);
  Mention* make_room_for_names(Mention* last);
  void note_room_for_names();
  std::uint64_t offset_of(const char* p) const {
    return passed_ + static_cast<std::uint64_t>(p - buffer_.get());
  }

  std::istream& in_;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_;
  const char* at_;  // what was not taken yet: [at_, end_)
  const char* end_;
  bool ended_ = false;
  bool knows_resources_ = false;
  Scrutiny scrutiny_;
  std::uint64_t max_held_;
  std::uint64_t passed_;        // bytes of the input in front of the buffer
  std::vector<Mention> names_;  // room for them: those of the statement are up to last_name_
  Mention* last_name_;
  const Mention* last_with_room_;  // up to here those of one more block, and one, fit there

  // What is known of the 64 bytes that are looked at.
  const char* block_ = nullptr;  // null for none
  std::uint64_t marks_ = 0;      // a bit for each byte that may matter and was not dealt with
  bool is_unusual_ = false;      // has a backslash or a high byte; full scrutiny only
  std::uint64_t in_string_ = 0;  // all ones where a string goes on behind the block, else 0
};

}  // namespace Kessel::Exchange
