#include "writer/plain_rewriting.h"

#include <cmath>
#include <stdexcept>

namespace Kessel::test::plain {

namespace {

constexpr std::size_t NONE = std::string::npos;

/// The number of the next reference at or after `pos`, which ends up behind its digits; 0 for none.
std::uint32_t next_reference(std::size_t& pos, std::string_view text) {
  while (pos != NONE && pos < text.size()) {
    if (text[pos] == '#') {
      const std::size_t first = ++pos;
      while (pos < text.size() && text[pos] >= '0' && text[pos] <= '9') ++pos;
      const std::string digits(text.substr(first, pos - first));
      if (digits.empty()) return 0;
      const std::size_t significant = digits.find_first_not_of('0');
      if (significant == NONE || digits.size() - significant > 10) return 0;
      const unsigned long long value = std::stoull(digits);
      return value > 4294967295ULL ? 0 : static_cast<std::uint32_t>(value);
    }
    if (text[pos] == '\'') {
      pos = text.find('\'', pos + 1);
      if (pos == NONE) return 0;
    }
    pos = text.find_first_of("'#", pos + 1);
  }
  return 0;
}

std::string drop_reference(std::string text, std::size_t& pos, std::size_t start) {
  const std::size_t p = text.find_last_of(",(", start);
  if (p == NONE) return text;
  const std::size_t d = text[p] == '(' ? p + 1 : p;
  if (pos <= d) return text;
  std::size_t length = pos - d;
  pos = d;
  if (text[d] != ',' && d + length < text.size() && text[d + length] == ',') ++length;
  return text.erase(d, length);
}

std::string renumber_reference(Slots slots, Part* part, std::uint32_t id, std::size_t& pos,
                               std::string text) {
  const auto digits = static_cast<std::size_t>(std::log10(id)) + 1;
  if (pos <= digits) return text;
  const std::size_t start = pos - digits;
  if (id >= slots.size()) throw std::out_of_range("invalid vector subscript");
  const Entity* record = slots[id];
  if (record == nullptr || !record->part_numbers.contains(part)) {
    return drop_reference(text, pos, start);
  }
  const std::string number = std::to_string(record->part_numbers.at(part));
  text.replace(start, digits, number);
  pos = start + number.size();
  return text;
}

}  // namespace

std::vector<std::uint32_t> references_in(std::string_view text) {
  std::vector<std::uint32_t> found;
  std::size_t pos = 0;
  while (const std::uint32_t id = next_reference(pos, text)) found.push_back(id);
  return found;
}

std::string rewrite_references(std::string text, Slots slots, Part* part) {
  std::size_t pos = 0;
  while (const std::uint32_t id = next_reference(pos, text)) {
    text = renumber_reference(slots, part, id, pos, text);
  }
  return text;
}

std::string rewrite_presentation_items(const std::string& record_text, const Entity& record,
                                       Slots slots, Part* part) {
  std::string text = record_text;
  std::size_t pos = 0;
  const std::uint32_t own = next_reference(pos, text);
  if (own == 0) return "";
  text = renumber_reference(slots, part, own, pos, text);

  pos = text.rfind('#');
  if (const std::uint32_t last = next_reference(pos, text)) {
    text = renumber_reference(slots, part, last, pos, text);
  }

  std::string items;
  for (const std::uint32_t id : record.get_references()) {
    if (id >= slots.size()) throw std::out_of_range("invalid vector subscript");
    if (slots[id] == nullptr || !slots[id]->part_numbers.contains(part)) continue;
    if (!items.empty()) items += ",";
    items += "#" + std::to_string(slots[id]->part_numbers.at(part));
  }

  const std::size_t p1 = text.find('(');
  const std::size_t p2 = p1 == NONE ? NONE : text.find('(', p1 + 1);
  const std::size_t p3 = text.find(')');
  if (p2 == NONE || p3 == NONE || p3 < p2) return rewrite_references(record_text, slots, part);
  return text.replace(p2 + 1, p3 - p2 - 1, items);
}

}  // namespace Kessel::test::plain
