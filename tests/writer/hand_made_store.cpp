#include "writer/hand_made_store.h"

#include "support/file_internals.h"
#include "writer/rewrite.h"

namespace Kessel::test {

Part* HandMadeStore::add_part(PartKind kind, const std::string& path) {
  parts_.push_back(std::make_unique<Part>("PRODUCT_DEFINITION"));
  Part* part = parts_.back().get();
  part->part_kind = kind;
  part->path = path;
  FileInternals::add_part(file_, part);
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
  std::vector<Reference> references;
  find_references(text, references);
  std::string out;
  rewrite_references(text, references, slots(), part, out);
  return out;
}

std::string HandMadeStore::rewritten_presentation(std::string_view text, const Entity& record,
                                                  Part* part) const {
  std::vector<Reference> references;
  find_references(text, references);
  std::string out;
  rewrite_presentation_items(text, references, record, slots(), part, out);
  return out;
}

}  // namespace Kessel::test
