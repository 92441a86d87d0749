// Cuts an exchange file into statements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
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
                           std::uint64_t max_held = NO_LIMIT, std::size_t block_size = BLOCK_SIZE);

  /// The next statement. What it gives is valid until the next call.
  Cut next(Scrutiny scrutiny = Scrutiny::full);
  const Statement& statement() const { return statement_; }
  /// The instance names in it, in order.
  const std::vector<Mention>& mentions() const { return mentions_; }

  /// From now on `<...>` is a literal (ISO 10303-21, 10 and 11: URIs), as it is in the sections
  /// that name what stands elsewhere.
  void know_resources(bool know) { knows_resources_ = know; }

  /// The first bytes of the input, as many as there are up to `most`; takes none of them.
  std::string_view peek(std::size_t most);
  /// Passes over `count` bytes, which peek() has shown.
  void pass_over(std::size_t count) {
    begin_ += count;
    block_ = nullptr;
  }

  /// The offset behind all that was taken.
  std::uint64_t offset() const { return passed_ + begin_; }

 private:
  enum class Scan : std::uint8_t { closed, more, in_string, in_comment };
  bool refill();
  const char* find_long_lead_end(const char* p, bool& is_open) const;
  template <bool full>
  void find_marks(const char* block);
  template <bool full>
  Scan scan(const char* from, const char*& at);
  Scan scan_plainly(const char* from, const char*& at);
  void begin_statement();
  void mention(const char*& p);
  void mention_unusual(const char* begin, const char* p);
  void look_at(const char* from, const char* to);

  std::istream& in_;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_;
  std::size_t begin_ = 0;  // what was not taken yet: [begin_, end_)
  std::size_t end_ = 0;
  bool ended_ = false;
  bool knows_resources_ = false;
  std::uint64_t max_held_;
  std::uint64_t passed_;  // bytes of the input in front of the buffer
  Statement statement_;
  std::vector<Mention> mentions_;

  // What is known of the 64 bytes that are looked at.
  const char* block_ = nullptr;  // null for none
  std::uint64_t marks_ = 0;      // a bit for each byte that may matter and was not dealt with
  std::uint64_t unusual_ = 0;    // a bit for each backslash and high byte; full scrutiny only
  std::uint64_t in_string_ = 0;  // all ones where a string goes on behind the block, else 0
  bool has_full_marks_ = false;  // those of full scrutiny
};

}  // namespace Kessel::Exchange
