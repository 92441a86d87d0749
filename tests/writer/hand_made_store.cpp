#include "writer/hand_made_store.h"

#include <algorithm>
#include <cstddef>

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

/// What `put(text, out)` writes for a copy of `text` around which no byte may be touched, with
/// exactly `room` bytes at `out`.
template <class Put>
std::string put_into(std::size_t room, std::string_view text, Put put) {
  const auto copy = std::make_unique<char[]>(text.size());
  std::copy(text.begin(), text.end(), copy.get());
  const auto out = std::make_unique<char[]>(room);
  return {out.get(), put(std::string_view(copy.get(), text.size()), out.get())};
}

}  // namespace

std::string HandMadeStore::rewritten_with_references(std::string_view text, Part* part) const {
  std::vector<TextReference> references;
  find_references(text, references);
  const std::uint32_t number = file_.at(references.front().number)->part_numbers.at(part);
  return put_into(rewriting_room(text, references), text, [&](std::string_view copy, char* out) {
    return rewrite_record(copy, references, number, slots(), part, out);
  });
}

std::string HandMadeStore::rewritten_on_the_way(std::string_view text, Part* part) const {
  const TextReference own = first_reference(text).value();
  const std::uint32_t number = file_.at(own.number)->part_numbers.at(part);
  return put_into(rewriting_room(text), text, [&](std::string_view copy, char* out) {
    return rewrite_record(copy, own, number, slots(), part, out);
  });
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
