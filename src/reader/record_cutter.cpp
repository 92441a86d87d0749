// Cuts an exchange file into its header lines and its data records.
#include "reader/record_cutter.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "findings/refusals.h"
#include "reader/text.h"

namespace Kessel {

namespace {
constexpr std::size_t BLOCK_SIZE = std::size_t{256} * 1024;

std::unique_ptr<char[]> make_buffer(std::size_t capacity) {
  return std::make_unique_for_overwrite<char[]>(capacity + RecordCutter::PADDING);
}
}  // namespace

RecordCutter::RecordCutter(std::istream& in)
    : in_(in), buffer_(make_buffer(BLOCK_SIZE)), capacity_(BLOCK_SIZE), ended_(!in.good()) {}

/// Reads behind what is left in the buffer, which moves to the front first and grows when it fills
/// the buffer. Returns whether anything was read.
bool RecordCutter::refill() {
  const std::size_t left = end_ - begin_;
  if (counts_lines_) {
    count_lines_up_to(begin_);
    counted_ = 0;
  }
  passed_ += begin_;
  if (left == capacity_) {
    if (left >= max_held_) throw_too_long();
    // Twice the room, but no more than for the longest text with its delimiter.
    const auto more = static_cast<std::size_t>(std::min<std::uint64_t>(left, max_held_ - left + 1));
    auto larger = make_buffer(capacity_ + more);
    std::memcpy(larger.get(), buffer_.get() + begin_, left);
    buffer_ = std::move(larger);
    capacity_ += more;
  } else if (begin_ != 0) {
    std::memmove(buffer_.get(), buffer_.get() + begin_, left);
  }
  begin_ = 0;
  end_ = left;
  in_.read(buffer_.get() + end_, static_cast<std::streamsize>(capacity_ - end_));
  const auto count = static_cast<std::size_t>(in_.gcount());
  end_ += count;
  in_.clear(in_.rdstate() & std::ios::badbit);  // Nobody has come to the end yet.
  return count != 0;
}

/// What stands before the next `delimiter`, which is taken too; at the end of the input the rest.
std::string_view RecordCutter::take_until(char delimiter) {
  std::size_t searched = 0;
  for (;;) {
    const char* begin = buffer_.get() + begin_;
    const std::size_t left = end_ - begin_;
    if (const void* found = std::memchr(begin + searched, delimiter, left - searched)) {
      const auto length = static_cast<std::size_t>(static_cast<const char*>(found) - begin);
      begin_ += length + 1;
      return {begin, length};
    }
    searched = left;
    if (ended_ || !refill()) {
      ended_ = true;
      begin_ = end_;
      in_.setstate(left == 0 ? std::ios::eofbit | std::ios::failbit : std::ios::eofbit);
      return {buffer_.get() + end_ - left, left};
    }
  }
}

std::string_view RecordCutter::next_line() {
  return trim(take_until('\n'));
}

std::string_view RecordCutter::next_piece() {
  return trim(take_until(';'));
}

std::string_view RecordCutter::read_record_plainly() {
  if (ended_) {
    in_.peek();  // Asks the stream again, for nothing: the end stays the end.
    return "A";
  }
  std::string_view piece;
  for (;;) {
    piece = next_piece();
    if (ended_ || piece.empty() || piece.front() == '#') break;
  }
  if (piece.empty() || ended_ || is_whole_record(piece)) return piece;
  return join_pieces(piece);
}

std::string_view RecordCutter::join_pieces(std::string_view first) {
  joined_place_ = place_of(first);
  joined_ = first;
  do {
    joined_ += next_piece();
    if (joined_.size() > max_held_) throw_too_long();
  } while (!ended_ && !is_whole_record(joined_));
  const std::size_t size = joined_.size();
  joined_.append(PADDING, ' ');
  return std::string_view(joined_).substr(0, size);
}

void RecordCutter::throw_too_long() const {
  throw InputError(too_long(max_held_, offset()));
}

void RecordCutter::count_lines_up_to(std::size_t position) {
  const char* const buffer = buffer_.get();
  lines_ += static_cast<std::uint64_t>(std::count(buffer + counted_, buffer + position, '\n'));
  counted_ = position;
}

Place RecordCutter::place_at(std::size_t position) {
  if (counts_lines_) count_lines_up_to(position);
  return {passed_ + position, lines_ + 1};
}

Place RecordCutter::place_of(std::string_view taken) {
  if (taken.data() == joined_.data()) return joined_place_;
  return place_at(static_cast<std::size_t>(taken.data() - buffer_.get()));
}

Finding unclosed(std::string_view last, std::uint64_t offset) {
  if (last.front() != '#') return unclosed_text(offset);
  const char* digits = last.data() + 1;
  const std::uint32_t number = read_number(digits, last.data() + last.size());
  return unclosed_record(number, is_whole_record(last), offset);
}

}  // namespace Kessel
