// The block of records by which an assembly's file points at a component's file.
#include "writer/external_reference.h"

#include <stdexcept>

#include "structure/definition_search.h"

namespace Kessel {

namespace {

/// The number of instance `id` in `target`'s file.
std::uint32_t number_of(Slots slots, std::uint32_t id, Part* target) {
  const Entity* entity = slot_at(slots, id);
  if (entity == nullptr || !entity->part_numbers.contains(target)) {
    throw std::out_of_range("invalid map<K, T> key");
  }
  return entity->part_numbers.number_or_zero(target);
}

/// Writes records one after the other, each under the next number of a part's file.
class BlockWriter {
 public:
  explicit BlockWriter(Part* part) : part_(part) {}

  /// Adds the record `keyword(attributes)` and returns "#" and its number, to refer to it.
  std::string add(std::string_view keyword, const std::string& attributes) {
    std::string name = "#" + std::to_string(++part_->last_instance_number);
    text_.append(name).append("=").append(keyword);
    text_.append("(").append(attributes).append(");\n");
    return name;
  }

  std::string take() { return std::move(text_); }

 private:
  Part* part_;
  std::string text_;
};

}  // namespace

std::string make_external_reference(Slots slots, ReachabilitySearch& search, Part* target,
                                    const Entity& link, std::string_view file_name) {
  const std::string name = "'" + std::string(file_name) + "'";

  BlockWriter block(target);
  const std::string type = block.add("DOCUMENT_TYPE", "'geometry'");
  const std::string document = block.add("DOCUMENT_FILE", name + ",'',''," + type + ",'',$");
  block.add("DOCUMENT_REPRESENTATION_TYPE", "'digital'," + document);
  const std::string source = block.add("EXTERNAL_SOURCE", "IDENTIFIER('')");
  const std::string role =
      block.add("IDENTIFICATION_ROLE", "'external document id and location',$");
  block.add("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT",
            name + "," + role + "," + source + ",(" + document + ")");
  const std::string property =
      block.add("PROPERTY_DEFINITION", "'external definition',''," + document);
  const std::uint32_t shape = number_of(slots, link.get_reference(1), target);
  block.add("PROPERTY_DEFINITION_REPRESENTATION", property + ",#" + std::to_string(shape));
  const std::uint32_t definition = find_definition(search, link.get_reference(0));
  const std::string subject = "#" + std::to_string(number_of(slots, definition, target));
  const std::string reference =
      block.add("APPLIED_DOCUMENT_REFERENCE", document + ",'',(" + subject + ")");
  const std::string object_role = block.add("OBJECT_ROLE", "'mandatory',$");
  block.add("ROLE_ASSOCIATION", object_role + "," + reference);
  return block.take();
}

}  // namespace Kessel
