// Rewrites record texts: numbers, references, shared contexts.
#include "writer/rewrite.h"

#include <cstring>
#include <utility>

#include "reader/references.h"
#include "reader/text.h"

namespace Kessel {

namespace {

void append_number(std::string& out, std::uint32_t number) {
  char digits[NUMBER_ROOM];
  out.append(digits, write_number(digits, number));
}

/// The instance's number in `part`'s file, 0 when the part does not hold it.
std::uint32_t number_in(Slots slots, std::uint32_t id, Part* part) {
  const Entity* entity = slot_at(slots, id);
  return entity == nullptr ? 0 : entity->part_numbers.number_or_zero(part);
}

/// Writes one text piece by piece into room that is known to suffice, and takes back what turns out
/// to belong to a reference that goes.
class Rewriter {
 public:
  /// Appends to `out`: at most `room` bytes in all, of which every number needs NUMBER_ROOM.
  Rewriter(std::string& out, std::size_t room) : out_(out) {
    const std::size_t before = out.size();
    out.resize(before + room + CHUNK);
    floor_ = end_ = out.data() + before;
  }

  /// Appends the `size` bytes at `text`, behind which the source goes on to `source_end`.
  void copy(const char* text, std::size_t size, const char* source_end) {
    // Fast path for what stands between two references: a copy of fixed size takes no call.
    if (size <= CHUNK && static_cast<std::size_t>(source_end - text) >= CHUNK) {
      std::memcpy(end_, text, CHUNK);
    } else {
      std::memcpy(end_, text, size);
    }
    end_ += size;
  }
  void put_number(std::uint32_t number) { end_ = write_number(end_, number); }

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

  void finish() { out_.resize(static_cast<std::size_t>(end_ - out_.data())); }

 private:
  static constexpr std::size_t CHUNK = 32;

  std::string& out_;
  char* floor_;
  char* end_;
};

}  // namespace

void find_references(std::string_view text, std::vector<Reference>& found) {
  found.clear();
  const char* const base = text.data();
  for_each_reference(text, [&](std::uint32_t number, const char* begin, const char* end) {
    while (*begin == '0') ++begin;
    found.push_back(
        {static_cast<std::size_t>(begin - base), static_cast<std::size_t>(end - base), number});
  });
}

void rewrite_references(std::string_view text, const std::vector<Reference>& references,
                        Slots slots, Part* part, std::string& out) {
  Rewriter rewriter(out, text.size() + references.size() * NUMBER_ROOM);
  const char* const text_end = text.data() + text.size();
  std::size_t copied = 0;
  for (const Reference& reference : references) {
    rewriter.copy(text.data() + copied, reference.begin - copied, text_end);
    copied = reference.end;
    if (const std::uint32_t number = number_in(slots, reference.number, part)) {
      rewriter.put_number(number);
      continue;
    }
    const char separator = rewriter.cut_reference();
    if (separator == 0) {
      copied = reference.begin;  // Stays as it is.
    } else if (separator == '(' && copied < text.size() && text[copied] == ',') {
      ++copied;  // The first of its list: the comma behind it goes.
    }
  }
  rewriter.copy(text.data() + copied, text.size() - copied, text_end);
  rewriter.finish();
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
  std::vector<Reference> references;
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

void rewrite_presentation_items(std::string_view text, const std::vector<Reference>& references,
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
    if (number == 0) continue;
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
