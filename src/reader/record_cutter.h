// Cuts an exchange file into its header lines and its data records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "findings/place.h"
#include "kessel/finding.h"
#include "reader/text.h"

namespace Kessel {

/// Reads an exchange file (ISO 10303-21) from front to back, by blocks, as text: it knows lines,
/// ";" and white space, nothing else of the grammar.
///
/// A data record is what stands between two ";" and begins with "#"; a piece that does not end in
/// ")" was cut at a ";" inside a string and is joined with the next, without that ";" and without
/// the white space around it (outputs depend on that). Pieces that begin otherwise are skipped.
///
/// Reads from the stream's current position and leaves the position anywhere behind what it gave
/// out. The stream's state is the one in which std::getline would leave it, for each line and
/// piece: good up to the end of the input; there eofbit alone where anything stands behind the last
/// delimiter, be it white space, and failbit as well where nothing does. The stream must outlive
/// the cutter.
class RecordCutter {
 public:
  /// Bytes behind a record that can be read, whatever they are.
  static constexpr std::size_t PADDING = 32;

  explicit RecordCutter(std::istream& in);

  /// The next line, without its "\n" and white space at its ends; empty at the end of the input.
  /// Valid until the next call.
  std::string_view next_line();

  /// What stands in front of the next ";", without white space at its ends, be it a record, part of
  /// one, or something else; at the end of the input the rest. Valid until the next call.
  std::string_view next_piece();

  /// The next record, without its ";", and with PADDING bytes behind it; empty at the end of the
  /// data, which is the end of the input or an empty piece (";;"). Valid until the next call.
  ///
  /// Where the input ended before a piece was closed by ";", that piece is returned, and every
  /// later call returns "A": a caller that waits for an empty record waits for ever.
  ///
  /// Fast path: nearly every record is one piece that stands in the buffer as a whole.
  [[gnu::always_inline]] std::string_view read_record() {
    const char* first = buffer_.get() + begin_;
    const void* const found = std::memchr(first, ';', end_ - begin_);
    if (found == nullptr) return read_record_plainly();
    const char* last = static_cast<const char*>(found);
    const std::size_t behind = static_cast<std::size_t>(last - buffer_.get()) + 1;
    while (is_space(*first)) ++first;  // Ends at the ";".
    if (*first != '#') return read_record_plainly();
    while (is_space(last[-1])) --last;
    if (last[-1] != ')') return read_record_plainly();
    begin_ = behind;
    return {first, static_cast<std::size_t>(last - first)};
  }

  /// The same without the fast path for records that stand in the buffer as a whole.
  std::string_view read_record_plainly();

  /// Whether the input ended before the last line or piece was closed.
  bool input_ended() const { return ended_; }

  /// The longest text that the cutter may hold. Where a line or record is longer, next_line() and
  /// read_record() throw InputError.
  void limit_memory(std::uint64_t bytes) { max_held_ = bytes; }

  /// Lets the next two count lines. To be called before anything is read.
  void count_lines() { counts_lines_ = true; }

  /// Where the line, record or piece begins that was given out last.
  Place place_of(std::string_view taken);

  /// The place behind all that was taken.
  Place here() { return place_at(begin_); }

  /// The offset behind all that was taken.
  std::uint64_t offset() const { return passed_ + begin_; }

 private:
  Place place_at(std::size_t position);
  void count_lines_up_to(std::size_t position);
  [[noreturn]] void throw_too_long() const;
  std::string_view take_until(char delimiter);
  std::string_view join_pieces(std::string_view first);
  bool refill();

  std::istream& in_;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_;
  std::size_t begin_ = 0;  // what was not given out yet: [begin_, end_)
  std::size_t end_ = 0;
  bool ended_ = false;
  std::string joined_;

  std::uint64_t max_held_ = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t passed_ = 0;  // bytes of the input in front of the buffer
  bool counts_lines_ = false;
  std::uint64_t lines_ = 0;  // line feeds in front of counted_
  std::size_t counted_ = 0;  // position in the buffer
  Place joined_place_;
};

/// What a run says of `last`, which begins at `offset`: the input's last record, or other text,
/// that no ";" completes.
Finding unclosed(std::string_view last, std::uint64_t offset);

/// Whether the text that begins with `record` is a whole record rather than a piece of one.
inline bool is_whole_record(std::string_view record) {
  return record.back() == ')';
}

}  // namespace Kessel
