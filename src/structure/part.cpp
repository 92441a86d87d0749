// Parts: construction, links and names.
#include "kessel/part.h"

#include <utility>

#include "kessel/encoding.h"
#include "kessel/file.h"
#include "structure/part_names.h"

namespace Kessel {

std::map<std::filesystem::path, std::uint32_t> Part::_filenames;

Part::Part(Entity&& record) : EntityWithType(std::move(record)) {}

Part::Part(std::string_view type) : EntityWithType(type) {}

void Part::add_child_part(Part* child) {
  children.push_back(child);
}

void Part::add_parent_part(Part* parent) {
  parents.push_back(parent);
}

std::vector<Part*> Part::childs_parts() const {
  return children;
}

std::vector<Part*> Part::parents_parts() const {
  return parents;
}

namespace {

/// `at(id)` is the record in a slot.
template <class At>
void name_after_record(Part& part, At at) {
  // A definition leads to its formation and on to its product, a mapped item to its mapping source
  // and on to the mapped representation.
  const Entity* middle = at(part.get_reference(0));
  if (middle == nullptr) return;
  const unsigned product = middle->get_reference(0);
  if (at(product) == nullptr) return;

  part.path = "#" + std::to_string(product) + "_part";
  const std::uint32_t count = ++Part::_filenames[part.path];
  if (count > 1) part.path += "_(" + std::to_string(count) + ")_";
  part.path += ".stp";
}

}  // namespace

void Part::resolve_name(const File* file, std::string (*)(std::string_view)) {
  name_after_record(*this, [file](unsigned id) { return file->at(id); });
}

void resolve_name(Part& part, Slots slots) {
  name_after_record(part, [&](unsigned id) { return slot_at(slots, id); });
}

std::string Part::get_utf8_filename() const {
  return fspath_to_utf8(path.filename());
}

std::string Part::get_utf8_filepath() const {
  return fspath_to_utf8(path);
}

std::string Part::get_encoded_filename() const {
  return encode_utf8_to_step(get_utf8_filename());
}

std::string Part::get_encoded_filepath() const {
  return encode_utf8_to_step(get_utf8_filepath());
}

}  // namespace Kessel
