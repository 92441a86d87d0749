// The texts of a file that is read a second time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <istream>
#include <memory>
#include <span>
#include <vector>

#include "exchange/digits.h"
#include "exchange/reader.h"
#include "instances/text_layout.h"

namespace Kessel {

/// Copies what stands between two names, in blocks of a fixed size, whatever stands behind it: so
/// many bytes behind both ends may be read and written.
inline constexpr std::size_t PIECE_BLOCK = 32;
[[gnu::always_inline]] inline char* copy_piece(const char* from, std::size_t size, char* out) {
  std::memcpy(out, from, PIECE_BLOCK);  // Nearly every such piece is short.
  for (std::size_t copied = PIECE_BLOCK; copied < size; copied += PIECE_BLOCK) {
    std::memcpy(out + copied, from + copied, PIECE_BLOCK);
  }
  return out + size;
}

/// Reads the texts of a file again, one after the other, by what was noted of them when it was read
/// first: without looking for anything. Throws InputError where the file is not the same any more.
class LaidOutInput {
 public:
  /// Bytes behind a text that can be read.
  static constexpr std::size_t PADDING = PIECE_BLOCK;

  static constexpr std::size_t BLOCK_SIZE = std::size_t{256} * 1024;

  /// Reads `in` from its beginning, so many bytes at once. Both must outlive the object.
  LaidOutInput(std::istream& in, const TextLayout& layout, std::size_t block_size = BLOCK_SIZE);

  /// Whether there is no further text.
  bool is_at_end() const { return cursor_.is_at_end(); }

  /// Goes on to the next text. All names of the one in front must have been taken. What the
  /// functions below give is valid until the next call.
  void next() {
    const NamePlace own = cursor_.take_place();
    const std::uint64_t size = cursor_.take_size();
    const std::uint64_t needed = own.gap + own.digits + size;
    if (needed > static_cast<std::uint64_t>(end_ - text_end_)) read_on(needed);
    digits_ = text_end_ + own.gap;
    behind_number_ = digits_ + own.digits;
    text_end_ = behind_number_ + size;
    if (own.digits != 0) expect_name(digits_);
  }

  /// Of a record: the digits of its number, that number, and what is behind it.
  const char* digits() const { return digits_; }
  std::uint64_t number() const {
    const char* p = digits_;
    return Exchange::take_number(p);
  }
  const char* behind_number() const { return behind_number_; }
  const char* end() const { return text_end_; }
  /// Of the end, in bytes from the input's beginning.
  std::uint64_t offset() const {
    return passed_ + static_cast<std::uint64_t>(text_end_ - buffer_.get());
  }

  /// The place of the record's next name, counted from the last one or from its number.
  NamePlace take_place() { return cursor_.take_place(); }
  /// Notes that the digits of an instance name should begin at `digits`.
  void expect_name(const char* digits) { is_changed_ |= digits[-1] ^ '#'; }

  /// Of a record whose names were counted what was noted of them, which is taken before them.
  TextLayout::NameCount take_count() { return TextLayout::NameCount(cursor_.take_size()); }
  /// Passes over the record's names, of which there are so many.
  void pass_over(std::size_t names) {
    for (; names > 0; --names) take_place();
  }

  /// The record with all its names, of which there are so many; takes them. Has no keyword.
  const Exchange::Record& take_record(std::size_t names);
  /// The same where they were counted.
  const Exchange::Record& take_record(TextLayout::NameCount count);

  /// A line of an anchor or reference section with its names; takes them.
  struct Entry {
    Exchange::Statement statement;
    std::span<const Exchange::Mention> mentions;
  };
  Entry take_entry();

  /// Throws where an instance name was not found in its place.
  void require_unchanged() const;

 private:
  void read_on(std::uint64_t needed);
  Exchange::Mention* take_mention(const char* begin, const char* end, Exchange::Mention* out);
  Exchange::Mention* take_mentions(const char* from, std::size_t count, Exchange::Mention* out);

  std::istream& in_;
  TextLayout::Cursor cursor_;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_;
  const char* end_;               // of what was read
  const char* digits_ = nullptr;  // of the text's own number
  const char* behind_number_ = nullptr;
  const char* text_end_;
  std::uint64_t passed_ = 0;  // bytes of the input in front of the buffer
  int is_changed_ = 0;
  std::vector<Exchange::Mention> mentions_;  // room for them
  Exchange::Record record_;                  // what was taken last
};

}  // namespace Kessel
