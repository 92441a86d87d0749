// Rewrites record texts: numbers, references, shared contexts.
#include "writer/rewrite.h"

#include <cstring>
#include <span>
#include <utility>

#include "exchange/digits.h"
#include "exchange/lexer.h"
#include "reader/references.h"
#include "reader/text.h"

namespace Kessel {

namespace {

void append_number(std::string& out, std::uint32_t number) {
  char digits[Exchange::NUMBER_ROOM];
  out.append(digits, Exchange::write_number(digits, number));
}

/// The instance's number in `part`'s file, 0 when the part does not hold it.
std::uint32_t number_in(Slots slots, std::uint32_t id, Part* part) {
  const Entity* entity = slot_at(slots, id);
  return entity == nullptr ? 0 : entity->part_numbers.number_or_zero(part);
}

/// Whether the part holds the instance, which exists: also under the number 0, which only a host
/// gives.
bool is_held(Slots slots, std::uint32_t id, Part* part) {
  const Entity* entity = slots[id];
  return entity != nullptr && entity->part_numbers.contains(part);
}

/// Copies what stands between two references; nothing behind it need be readable.
char* copy_exactly(const char* from, std::size_t size, char* out) {
  std::memcpy(out, from, size);
  return out + size;
}

/// Writes one text piece by piece, each by `copy`, and takes back what turns out to belong to a
/// reference that goes.
template <auto copy>
class Rewriter {
 public:
  Rewriter(std::string_view text, Slots slots, Part* part, char* out)
      : slots_(slots),
        part_(part),
        text_(text.data()),
        copied_(text.data()),
        text_end_(text.data() + text.size()),
        floor_(out),
        end_(out) {}

  /// Writes the text up to `reference`, and `number` in its place.
  void put_number(const TextReference& reference, std::uint32_t number) {
    copy_up_to(text_ + reference.begin);
    copied_ = text_ + reference.end;
    end_ = Exchange::write_number(end_, number);
  }

  /// Writes the text up to `reference`, and what becomes of it.
  void put_reference(const TextReference& reference) {
    if (const std::uint32_t number = number_in(slots_, reference.number, part_)) {
      return put_number(reference, number);
    }
    put_unknown(reference);
  }

  /// Writes the rest of the text. Returns the end of what was written.
  char* finish() {
    copy_up_to(text_end_);
    return end_;
  }

 private:
  /// The same for a reference that has no number, or the number 0. Kept out of the common path.
  [[gnu::noinline]] void put_unknown(const TextReference& reference) {
    if (is_held(slots_, reference.number, part_)) return put_number(reference, 0);
    const char* const begin = text_ + reference.begin;
    copy_up_to(begin);
    copied_ = text_ + reference.end;
    const char separator = cut_reference();
    if (separator == 0) {
      copied_ = begin;  // Stays as it is.
    } else if (separator == '(' && copied_ != text_end_ && *copied_ == ',') {
      ++copied_;  // The first of its list: the comma behind it goes.
    }
  }

  /// Appends the text that was not dealt with yet, up to `until`.
  void copy_up_to(const char* until) {
    end_ = copy(copied_, static_cast<std::size_t>(until - copied_), end_);
  }

  /// What was written ends in front of a reference's digits: goes back to the beginning of its list
  /// element. Returns what was found there: ',' (taken back too), '(' (stays), or 0: no list, and
  /// nothing was taken back.
  char cut_reference() {
    char* at = end_;
    while (at != floor_ && at[-1] != ',' && at[-1] != '(') --at;
    if (at == floor_) {
      floor_ = end_;  // No separator up to here: later cuts need not look again.
      return 0;
    }
    end_ = at[-1] == ',' ? at - 1 : at;
    return at[-1];
  }

  Slots slots_;
  Part* part_;
  const char* text_;
  const char* copied_;  // What was read, up to here, has been dealt with.
  const char* text_end_;
  char* floor_;  // No list begins or goes on in front of it.
  char* end_;
};

}  // namespace

void find_references(std::string_view text, std::vector<TextReference>& found) {
  found.clear();
  for_each_reference(text, [&](std::uint32_t number, const char* begin, const char* end) {
    found.push_back(reference_at(text, number, begin, end));
  });
}

void find_references(const Exchange::Record& record, std::vector<TextReference>& found) {
  found.clear();
  found.push_back(reference_at(record.text, static_cast<std::uint32_t>(record.number),
                               record.text.data() + 1, record.behind_number));
  for (const Exchange::Mention& other : record.mentions) {
    if (other.number == 0 || other.number > UINT32_MAX) continue;
    found.push_back(reference_at(record.text, static_cast<std::uint32_t>(other.number), other.begin,
                                 other.end));
  }
}

void find_all_references(std::string_view text, std::vector<TextReference>& found) {
  found.clear();
  Exchange::Lexer lexer(text);
  for (Exchange::Word word = lexer.next(); word.kind != Exchange::WordKind::end;
       word = lexer.next()) {
    if (word.kind != Exchange::WordKind::instance) continue;
    const std::uint64_t number = Exchange::number_in(word.text);
    if (number == 0 || number > UINT32_MAX) continue;
    const char* const digits = word.text.data() + 1;
    found.push_back(reference_at(text, static_cast<std::uint32_t>(number), digits,
                                 word.text.data() + word.text.size()));
  }
}

std::size_t rewriting_room(std::string_view text, const std::vector<TextReference>& references) {
  return text.size() + references.size() * Exchange::NUMBER_ROOM;
}

char* rewrite_references(std::string_view text, const std::vector<TextReference>& references,
                         Slots slots, Part* part, char* out) {
  Rewriter<copy_exactly> rewriter(text, slots, part, out);
  for (const TextReference& reference : references) rewriter.put_reference(reference);
  return rewriter.finish();
}

char* rewrite_record(std::string_view record, const std::vector<TextReference>& references,
                     std::uint32_t own_number, Slots slots, Part* part, char* out) {
  Rewriter<copy_exactly> rewriter(record, slots, part, out);
  rewriter.put_number(references.front(), own_number);
  for (const TextReference& other : std::span(references).subspan(1)) rewriter.put_reference(other);
  return rewriter.finish();
}

std::size_t rewriting_room(const LaidOutInput& input, std::size_t names) {
  const auto size = static_cast<std::size_t>(input.end() - input.digits()) + 1;
  return size + (1 + names) * Exchange::NUMBER_ROOM + PIECE_BLOCK;
}

char* rewrite_record(LaidOutInput& input, std::uint32_t own_number,
                     std::span<const std::uint32_t> numbers, char* out) {
  const char* copied = input.digits() - 1;  // What was read, up to here, has been dealt with.
  const auto put_number = [&](const char* begin, const char* end, std::uint32_t number) {
    while (*begin == '0') ++begin;  // Zeros in front of a number stay.
    out = copy_piece(copied, static_cast<std::size_t>(begin - copied), out);
    out = Exchange::write_number(out, number);
    copied = end;
  };
  put_number(input.digits(), input.behind_number(), own_number);
  for (const std::uint32_t number : numbers) {
    const NamePlace place = input.take_place();
    const char* const digits = copied + place.gap;
    input.expect_name(digits);
    put_number(digits, digits + place.digits, number);
  }
  return copy_piece(copied, static_cast<std::size_t>(input.end() - copied), out);
}

std::size_t rewriting_room(std::string_view record) {
  // A reference of two bytes, "#1", becomes as many as "#4294967295" has; an odd byte is text.
  constexpr std::size_t LONGEST_REFERENCE = 1 + Exchange::NUMBER_ROOM;
  return (record.size() + 1) / 2 * LONGEST_REFERENCE + PIECE_BLOCK;
}

char* rewrite_record(std::string_view record, const TextReference& own, std::uint32_t own_number,
                     Slots slots, Part* part, char* out) {
  Rewriter<copy_piece> rewriter(record, slots, part, out);
  rewriter.put_number(own, own_number);
  for_each_reference(record.substr(own.end),
                     [&](std::uint32_t number, const char* begin, const char* end) {
                       rewriter.put_reference(reference_at(record, number, begin, end));
                     });
  return rewriter.finish();
}

void rewrite_references(std::string_view text, const std::vector<TextReference>& references,
                        Slots slots, Part* part, std::string& out) {
  const std::size_t before = out.size();
  out.resize(before + rewriting_room(text, references));
  const char* end = rewrite_references(text, references, slots, part, out.data() + before);
  out.resize(static_cast<std::size_t>(end - out.data()));
}

namespace {

constexpr std::size_t NONE = std::string_view::npos;

/// Where the item list of a presentation record stands: between its parentheses.
struct ItemList {
  std::size_t open;
  std::size_t close;
  bool found() const { return open != NONE && close != NONE && open < close; }
};

ItemList find_item_list(std::string_view text) {
  const std::size_t first = text.find('(');
  return {first == NONE ? NONE : text.find('(', first + 1), text.find(')')};
}

/// Rewrites the reference that begins at the "#" at `mark`, if it is one, inside `text`.
void rewrite_one(std::string& text, std::size_t mark, Slots slots, Part* part) {
  std::vector<TextReference> references;
  find_references(std::string_view(text).substr(mark), references);
  if (references.empty()) return;
  references.resize(1);
  references[0].begin += mark;
  references[0].end += mark;
  std::string rewritten;
  rewrite_references(text, references, slots, part, rewritten);
  text = std::move(rewritten);
}

}  // namespace

void rewrite_presentation_items(std::string_view text, const std::vector<TextReference>& references,
                                const Entity& record, Slots slots, Part* part, std::string& out) {
  // Fast path: lists are long, so leave the items out before the rest is rewritten. Nothing of the
  // list can matter where the last reference stands behind it and behind a comma of its own.
  const ItemList list = find_item_list(text);
  const std::size_t last = text.rfind('#');
  const bool apart = list.found() && last > list.close &&
                     text.substr(list.close, last - list.close).find_first_of(",(") != NONE;
  std::string rest = apart ? std::string(text.substr(0, list.open + 1)).append(text, list.close)
                           : std::string(text);
  rewrite_one(rest, rest.find('#'), slots, part);
  rewrite_one(rest, rest.rfind('#'), slots, part);

  std::string items;
  for (const std::uint32_t id : record.references()) {
    const std::uint32_t number = number_in(slots, id, part);
    if (number == 0 && !is_held(slots, id, part)) continue;
    items += items.empty() ? "#" : ",#";
    append_number(items, number);
  }

  const ItemList place = find_item_list(rest);
  if (!place.found()) {
    rewrite_references(text, references, slots, part, out);
    return;
  }
  out.append(rest, 0, place.open + 1).append(items).append(rest, place.close);
}

std::string make_context_external(std::string text, const Entity& entity) {
  constexpr std::string_view EXTERNAL = "'external'";
  std::size_t comma = NONE;
  std::size_t end = NONE;
  if (entity.type() == "GEOMETRIC_REPRESENTATION_CONTEXT") {
    comma = text.find(',');
    if (comma != NONE) end = text.find(',', comma + 1);
  } else {
    constexpr std::string_view NAME = "REPRESENTATION_CONTEXT(";
    std::size_t name = text.find(NAME);
    while (name != NONE && name > 0 && text[name - 1] == '_') {
      name = text.find(NAME, name + NAME.size());
    }
    if (name != NONE) comma = text.find(',', name);
    if (comma != NONE) end = text.find(')', comma);
  }
  if (end != NONE) text.replace(comma + 1, end - comma - 1, EXTERNAL);
  return text;
}

}  // namespace Kessel
