#include "output/laid_out_input.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "findings/refusals.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

constexpr std::size_t BLOCK_SIZE = std::size_t{256} * 1024;

std::unique_ptr<char[]> make_block(std::size_t capacity) {
  return std::make_unique_for_overwrite<char[]>(capacity + LaidOutInput::PADDING);
}

}  // namespace

LaidOutInput::LaidOutInput(std::istream& in, const TextLayout& layout)
    : in_(in),
      cursor_(layout),
      buffer_(make_block(BLOCK_SIZE)),
      capacity_(BLOCK_SIZE),
      end_(buffer_.get()),
      text_end_(buffer_.get()) {
  in_.clear();
  in_.seekg(0);
}

/// Moves what was not taken yet to the front, and reads until so many bytes are there.
void LaidOutInput::read_on(std::uint64_t needed) {
  passed_ = offset();
  const auto left = static_cast<std::size_t>(end_ - text_end_);
  if (needed > capacity_) {
    capacity_ = static_cast<std::size_t>(needed);
    auto larger = make_block(capacity_);
    std::memcpy(larger.get(), text_end_, left);
    buffer_ = std::move(larger);
  } else {
    std::memmove(buffer_.get(), text_end_, left);
  }
  in_.read(buffer_.get() + left, static_cast<std::streamsize>(capacity_ - left));
  const std::size_t held = left + static_cast<std::size_t>(in_.gcount());
  std::memset(buffer_.get() + held, 0, PADDING);
  text_end_ = buffer_.get();
  end_ = buffer_.get() + held;
  if (held < needed) throw InputError(input_changed(passed_));
}

void LaidOutInput::take_mentions(const char* from, std::uint64_t count) {
  for (; count > 0; --count) {
    const NamePlace place = take_place();
    const char* const begin = from + place.gap;
    from = begin + place.digits;
    expect_name(begin);
    std::uint64_t number = 0;  // Stays where it is too large.
    std::from_chars(begin, from, number);
    mentions_.push_back({number, begin, from});
  }
}

Exchange::Record LaidOutInput::take_record(std::size_t names) {
  mentions_.clear();
  std::uint64_t number = 0;
  std::from_chars(digits_, behind_number_, number);
  mentions_.push_back({number, digits_, behind_number_});
  take_mentions(behind_number_, names);
  require_unchanged();
  Exchange::Statement statement;
  statement.text = {digits_ - 1, static_cast<std::size_t>(text_end_ - digits_) + 1};
  statement.offset = offset() - statement.text.size();
  return record_of(statement, mentions_);
}

LaidOutInput::Entry LaidOutInput::take_entry() {
  mentions_.clear();
  take_mentions(digits_, cursor_.take_size());
  require_unchanged();
  Entry entry{{}, mentions_};
  entry.statement.text = {digits_, static_cast<std::size_t>(text_end_ - digits_)};
  entry.statement.offset = offset() - entry.statement.text.size();
  return entry;
}

void LaidOutInput::require_unchanged() const {
  if (is_changed_ != 0) throw InputError(input_changed(offset()));
}

}  // namespace Kessel
