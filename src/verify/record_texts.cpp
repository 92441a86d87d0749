#include "verify/record_texts.h"

#include <algorithm>

#include "findings/refusals.h"
#include "kessel/errors.h"
#include "reader/text.h"

namespace Kessel {

namespace {
/// What is read at once: enough for some records that follow each other, and not too much where a
/// part's records stand far apart.
constexpr std::uint64_t WINDOW = std::uint64_t{8} * 1024;
}  // namespace

RecordTexts::RecordTexts(const std::filesystem::path& in)
    : in_(in, std::ios::in | std::ios::binary), index_(0) {}

std::uint32_t RecordTexts::note(std::string_view record, RecordCutter& cutter) {
  const char* digits = record.data() + 1;
  const std::uint32_t number = read_number(digits, record.data() + record.size());
  if (number == 0 || number >= index_.size()) return 0;
  std::uint32_t& index = index_.edit(number);
  if (index == 0) {
    spans_.emplace_back();
    index = static_cast<std::uint32_t>(spans_.size());
  }
  const std::uint64_t begin = cutter.place_of(record).offset;
  spans_[index - 1] = {begin, cutter.offset() - 1 - begin};
  return number;
}

std::string_view RecordTexts::operator[](std::uint32_t number) {
  const std::uint32_t index = index_[number];
  if (index == 0) throw InputError(input_changed(0));
  const std::string_view text = trim(read(spans_[index - 1]));
  if (text.find(';') == std::string_view::npos) return text;
  joined_.clear();
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(';', begin), text.size());
    joined_ += trim(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return joined_;
}

std::string_view RecordTexts::read(const Span& span) {
  const bool there =
      span.begin >= window_begin_ && span.begin + span.size <= window_begin_ + window_.size();
  if (!there) {
    in_.clear();
    in_.seekg(static_cast<std::streamoff>(span.begin));
    window_.resize(std::max(span.size, WINDOW));
    in_.read(window_.data(), static_cast<std::streamsize>(window_.size()));
    window_.resize(static_cast<std::size_t>(in_.gcount()));
    window_begin_ = span.begin;
    if (window_.size() < span.size) throw InputError(input_changed(span.begin));
  }
  return std::string_view(window_).substr(span.begin - window_begin_, span.size);
}

}  // namespace Kessel
