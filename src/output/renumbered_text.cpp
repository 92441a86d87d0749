#include "output/renumbered_text.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <type_traits>

#include "exchange/digits.h"

namespace Kessel {

namespace {

/// The number of a name that leads to no record. "#0" stays, as no record has that.
std::uint64_t missing_number(std::uint64_t number, std::uint32_t last) {
  return number == 0 || number > last ? number : number + last;
}

/// Fast path for pieces between references, which are short: two copies of a fixed size, which
/// overlap and take no call.
inline char* copy(const char* from, const char* to, char* out) {
  const auto size = static_cast<std::size_t>(to - from);
  const auto copy_twice = [&](auto width) {
    std::memcpy(out, from, width);
    std::memcpy(out + size - width, to - width, width);
  };
  if (size > 32) {
    std::memcpy(out, from, size);
  } else if (size >= 16) {
    copy_twice(std::integral_constant<std::size_t, 16>());
  } else if (size >= 8) {
    copy_twice(std::integral_constant<std::size_t, 8>());
  } else if (size >= 4) {
    copy_twice(std::integral_constant<std::size_t, 4>());
  } else {
    for (std::size_t i = 0; i < size; ++i) out[i] = from[i];
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
  return text.text.size() + text.mentions.size() * MOST_DIGITS;
}

char* renumbered(const MentioningText& text, const FileNumbers& numbers, FileId file, char* out) {
  const char* from = text.text.data();
  const char* const end = from + text.text.size();
  for (std::size_t i = 0; i < text.mentions.size(); ++i) {
    const Exchange::Mention& mention = text.mentions[i];
    out = copy(from, mention.begin, out);
    out = renumbered_name({mention.begin, mention.end}, text.references[i], numbers, file, out);
    from = mention.end;
  }
  return copy(from, end, out);
}

char* renumbered_name(std::string_view digits, Reference reference, const FileNumbers& numbers,
                      FileId file, char* out) {
  const Index record = reference.record();
  const std::uint32_t number = record == NO_RECORD ? 0 : numbers.of(record, file);
  if (number != 0) return Exchange::write_number(out, number);
  std::uint64_t missing = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), missing);
  // "#0", or more digits than any name has
  if (missing == 0) return std::copy(digits.begin(), digits.end(), out);
  return std::to_chars(out, out + MOST_DIGITS, missing_number(missing, numbers.last(file))).ptr;
}

}  // namespace Kessel
