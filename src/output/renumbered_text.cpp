#include "output/renumbered_text.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace Kessel {

namespace {

constexpr std::size_t MOST_DIGITS = 20;

/// The number of a name that leads to no record. "#0" stays, as no record has that.
std::uint64_t missing_number(std::uint64_t number, std::uint32_t last) {
  return number == 0 || number > last ? number : number + last;
}

/// Pieces between references are short, and copies of a fixed size take no call: copies a block
/// where both sides have room for it.
constexpr std::size_t BLOCK = 32;

inline char* copy(const char* from, const char* to, const char* readable_end, char* out) {
  const auto size = static_cast<std::size_t>(to - from);
  if (size <= BLOCK && readable_end - from >= static_cast<std::ptrdiff_t>(BLOCK)) {
    std::memcpy(out, from, BLOCK);
  } else {
    std::memcpy(out, from, size);
  }
  return out + size;
}

}  // namespace

MentioningText MentioningText::cut(std::string_view part) const {
  const auto begins = [&](const char* place) {
    return static_cast<std::size_t>(
        std::partition_point(mentions.begin(), mentions.end(),
                             [&](const Exchange::Mention& m) { return m.begin < place; }) -
        mentions.begin());
  };
  const std::size_t first = begins(part.data());
  const std::size_t end = begins(part.data() + part.size());
  return {part, mentions.subspan(first, end - first), references.subspan(first, end - first)};
}

std::size_t renumbering_room(const MentioningText& text) {
  return text.text.size() + text.mentions.size() * MOST_DIGITS + BLOCK;
}

char* write_decimal(std::uint64_t number, char* out) {
  return std::to_chars(out, out + MOST_DIGITS, number).ptr;
}

char* renumbered(const MentioningText& text, const FileNumbers& numbers, FileId file, char* out) {
  const char* from = text.text.data();
  const char* const end = from + text.text.size();
  for (std::size_t i = 0; i < text.mentions.size(); ++i) {
    const Exchange::Mention& mention = text.mentions[i];
    out = copy(from, mention.begin, end, out);
    from = mention.end;
    const Index record = text.references[i].record();
    const std::uint32_t number = record == NO_RECORD ? 0 : numbers.of(record, file);
    if (number != 0) {
      out = write_decimal(number, out);
    } else if (mention.number == 0) {
      out = copy(mention.begin, mention.end, end, out);  // "#0", or more digits than any name has
    } else {
      out = write_decimal(missing_number(mention.number, numbers.last(file)), out);
    }
  }
  return copy(from, end, end, out);
}

}  // namespace Kessel
