// Cuts an exchange file into its header lines and its data records.
#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

namespace Kessel {

/// Reads an exchange file (ISO 10303-21) from front to back, by blocks, as text: it knows lines,
/// ";" and white space, nothing else of the grammar.
///
/// A data record is what stands between two ";" and begins with "#"; a piece that does not end in
/// ")" was cut at a ";" inside a string and is joined with the next, without that ";" and without
/// the white space around it (outputs depend on that). Pieces that begin otherwise are skipped.
///
/// Reads from the stream's current position and leaves the position anywhere behind what it gave
/// out. The stream must outlive the cutter.
class RecordCutter {
 public:
  explicit RecordCutter(std::istream& in);

  /// The next line, without its "\n" and white space at its ends; empty at the end of the input.
  /// Valid until the next call.
  std::string_view next_line();

  /// The next record, without its ";"; empty at the end of the data, which is the end of the
  /// input or an empty piece (";;"). Valid until the next call.
  ///
  /// Where the input ended before a piece was closed by ";", that piece is returned, and every
  /// later call returns "A": a caller that waits for an empty record waits for ever.
  std::string_view next_record();

  /// The same without the fast path for records that stand in the buffer as a whole.
  std::string_view next_record_plainly();

  /// Whether the input ended before the last line or piece was closed.
  bool input_ended() const { return ended_; }

 private:
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
};

/// Whether the text that begins with `record` is a whole record rather than a piece of one.
inline bool is_whole_record(std::string_view record) {
  return record.back() == ')';
}

}  // namespace Kessel
