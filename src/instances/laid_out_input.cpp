#include "instances/laid_out_input.h"

#include <cstring>

#include "exchange/digits.h"
#include "findings/refusals.h"
#include "kessel/errors.h"

namespace Kessel {

namespace {

std::unique_ptr<char[]> make_block(std::size_t capacity) {
  return std::make_unique_for_overwrite<char[]>(capacity + LaidOutInput::PADDING);
}

}  // namespace

LaidOutInput::LaidOutInput(std::istream& in, const TextLayout& layout, std::size_t block_size)
    : in_(in),
      cursor_(layout),
      buffer_(make_block(block_size)),
      capacity_(block_size),
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

/// Puts the name with the digits [begin, end) to `out`, where they are still the same many.
inline Exchange::Mention* LaidOutInput::take_mention(const char* begin, const char* end,
                                                     Exchange::Mention* out) {
  expect_name(begin);
  const char* p = begin;
  const std::uint64_t number = Exchange::take_number(p);
  is_changed_ |= static_cast<int>(p != end);
  *out = {number, begin, end};
  return out + 1;
}

inline Exchange::Mention* LaidOutInput::take_mentions(const char* from, std::size_t count,
                                                      Exchange::Mention* out) {
  for (; count > 0; --count) {
    const NamePlace place = take_place();
    const char* const begin = from + place.gap;
    from = begin + place.digits;
    out = take_mention(begin, from, out);
  }
  return out;
}

const Exchange::Record& LaidOutInput::take_record(std::size_t names) {
  if (mentions_.size() <= names) mentions_.resize(names + 1);
  Exchange::Mention* const first = mentions_.data();
  const Exchange::Mention* const last =
      take_mentions(behind_number_, names, take_mention(digits_, behind_number_, first));
  require_unchanged();
  record_.text = {digits_ - 1, static_cast<std::size_t>(text_end_ - digits_) + 1};
  record_.offset = offset() - record_.text.size();
  complete_record(record_, {first, last});
  return record_;
}

const Exchange::Record& LaidOutInput::take_record(TextLayout::NameCount count) {
  take_record(count.names());
  record_.is_plain = count.is_plain();
  return record_;
}

LaidOutInput::Entry LaidOutInput::take_entry() {
  const auto names = static_cast<std::size_t>(cursor_.take_size());
  if (mentions_.size() < names) mentions_.resize(names);
  Exchange::Mention* const first = mentions_.data();
  Entry entry{{}, {first, take_mentions(digits_, names, first)}};
  require_unchanged();
  entry.statement.text = {digits_, static_cast<std::size_t>(text_end_ - digits_)};
  entry.statement.offset = offset() - entry.statement.text.size();
  return entry;
}

void LaidOutInput::require_unchanged() const {
  if (is_changed_ != 0) throw InputError(input_changed(offset()));
}

}  // namespace Kessel
