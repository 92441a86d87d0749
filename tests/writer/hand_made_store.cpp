#include "writer/hand_made_store.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <stdexcept>

#include "exchange/reader.h"
#include "instances/laid_out_input.h"
#include "model/store.h"
#include "writer/rewrite.h"

namespace Kessel::test {

Part* HandMadeStore::add_part(PartKind kind, const std::string& path) {
  parts_.push_back(std::make_unique<Part>("PRODUCT_DEFINITION"));
  Part* part = parts_.back().get();
  part->part_kind = kind;
  part->path = path;
  file_.add_part(part);
  return part;
}

Entity& HandMadeStore::add_record(std::uint32_t id, const std::vector<std::uint32_t>& references,
                                  std::string_view type) {
  Entity* record = type.empty() ? file_.create_entity(id) : file_.create_entity(id, type);
  for (const std::uint32_t reference : references) record->add_reference(reference);
  return *record;
}

void HandMadeStore::hold(std::uint32_t id, Part* part, std::uint32_t number) {
  if (file_.at(id) == nullptr) file_.create_entity(id);
  file_.at(id)->part_numbers.emplace(part, number);
}

std::string HandMadeStore::rewritten(std::string_view text, Part* part) const {
  std::vector<TextReference> references;
  find_references(text, references);
  std::string out;
  rewrite_references(text, references, slots(), part, out);
  return out;
}

namespace {

/// What `put(text, out)` writes for a copy of `text` around which no byte may be touched but so
/// many behind it, with exactly `room` bytes at `out`.
template <class Put>
std::string put_into(std::size_t room, std::string_view text, std::size_t behind, Put put) {
  const auto copy = std::make_unique<char[]>(text.size() + behind);
  std::copy(text.begin(), text.end(), copy.get());
  const auto out = std::make_unique<char[]>(room);
  return {out.get(), put(std::string_view(copy.get(), text.size()), out.get())};
}

}  // namespace

std::string HandMadeStore::rewritten_with_references(std::string_view text, Part* part) const {
  std::vector<TextReference> references;
  find_references(text, references);
  const std::uint32_t number = file_.at(references.front().number)->part_numbers.at(part);
  return put_into(rewriting_room(text, references), text, 0, [&](std::string_view copy, char* out) {
    return rewrite_record(copy, references, number, slots(), part, out);
  });
}

std::string HandMadeStore::rewritten_on_the_way(std::string_view text, Part* part) const {
  const TextReference own = first_reference(text).value();
  const std::uint32_t number = file_.at(own.number)->part_numbers.at(part);
  return put_into(rewriting_room(text), text, PIECE_BLOCK, [&](std::string_view copy, char* out) {
    return rewrite_record(copy, own, number, slots(), part, out);
  });
}

namespace {

/// What a standard reading notes of a file's records.
struct Noted final : Exchange::Listener {
  void record(const Exchange::Record& record) override {
    layout.add_counted(record);
    texts.emplace_back(record.text);
    is_plain &= record.is_plain;
    for (const Exchange::Mention& mention : record.mentions) mentioned.push_back(mention.number);
  }
  TextLayout layout;
  std::vector<std::string> texts;
  bool is_plain = true;
  std::vector<std::uint64_t> mentioned;
};

}  // namespace

std::optional<std::string> HandMadeStore::rewritten_by_layout(std::string_view text,
                                                              Part* part) const {
  std::istringstream in("ISO-10303-21;HEADER;ENDSEC;DATA;" + std::string(text) +
                        ";ENDSEC;END-ISO-10303-21;");
  Noted noted;
  if (read_exchange_file(in, {}, noted).error) return std::nullopt;
  if (noted.texts != std::vector{std::string(text)} || !noted.is_plain) return std::nullopt;
  std::vector<std::uint32_t> numbers;
  for (const std::uint64_t id : noted.mentioned) {
    const Entity* const entity = id < slots().size() ? slots()[id] : nullptr;
    numbers.push_back(entity == nullptr ? 0 : entity->part_numbers.number_or_zero(part));
    if (numbers.back() == 0) return std::nullopt;
  }
  LaidOutInput input(in, noted.layout);
  input.next();
  if (input.take_count().names() != numbers.size()) throw std::logic_error("other names");
  const std::uint32_t own = file_.at(static_cast<unsigned>(input.number()))->part_numbers.at(part);
  const auto out = std::make_unique<char[]>(rewriting_room(input, numbers.size()));
  std::string rewritten(out.get(), rewrite_record(input, own, numbers, out.get()));
  input.require_unchanged();
  return rewritten;
}

std::string HandMadeStore::rewritten_presentation(std::string_view text, const Entity& record,
                                                  Part* part) const {
  std::vector<TextReference> references;
  find_references(text, references);
  std::string out;
  rewrite_presentation_items(text, references, record, slots(), part, out);
  return out;
}

}  // namespace Kessel::test
