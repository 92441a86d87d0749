#include "verify/placed_input.h"

#include <algorithm>
#include <optional>

#include "association/associate.h"
#include "findings/messages.h"
#include "kessel/encoding.h"
#include "model/slots.h"
#include "reader/parse_file.h"
#include "structure/definition_search.h"
#include "structure/leaf.h"
#include "structure/names_of_their_own.h"
#include "structure/process_parts.h"

namespace Kessel {

namespace {

/// The component whose file a block at `link`, a shape definition representation that several parts
/// hold, names in `part`'s file: no value for no block, null for no file.
std::optional<const Part*> component_at(const Entity& link, const Part& part, AssemblyStyle style,
                                        const Part* defined) {
  if (style == AssemblyStyle::nested) {
    const bool points = defined != nullptr && defined != &part;
    return points ? std::optional(defined) : std::nullopt;
  }
  return part.part_kind == LEAF_PART ? std::nullopt : std::optional(first_leaf(link));
}

}  // namespace

PlacedInput::PlacedInput(const std::filesystem::path& in, const Options& options)
    : file_(parse_file_checked(in, options)), texts_(in) {
  const Silence silence;
  const NamesOfTheirOwn names;
  process_parts(*file_, decode_step_to_utf8);
  if (parts().size() < 2) return;
  associate_entities(*file_, options);
  list_records();

  blocks_.resize(parts().size());
  ReachabilitySearch search(file_->entities);
  const auto header_lines =
      static_cast<std::size_t>(1 + std::count(header().begin(), header().end(), '\n'));
  texts_.find_records(header_lines, file_->entities.size(), [&](std::uint32_t number) {
    place_blocks(number, options.assemblies, search);
  });
}

void PlacedInput::list_records() {
  first_record_.push_back(0);
  for (const Part* part : parts()) {
    first_record_.push_back(first_record_.back() + part->last_instance_number);
  }
  records_.resize(first_record_.back());
  file_->entities.for_each_in_use([&](std::size_t id, const Entity* entity) {
    if (entity == nullptr) return;
    for (const auto [part, number] : entity->part_numbers.entries()) {
      records_[first_record_[part->list_position] + number - 1] = static_cast<std::uint32_t>(id);
    }
  });
}

/// Notes the blocks that belong in front of the record `link`, if it is one that has some.
void PlacedInput::place_blocks(std::uint32_t link, AssemblyStyle style,
                               ReachabilitySearch& search) {
  const Entity* entity = slot_at(file_->entities, link);
  if (entity == nullptr || entity->part_numbers.size() < 2) return;
  if (entity->type() != "SHAPE_DEFINITION_REPRESENTATION") return;
  const auto references = entity->references();
  if (references.empty()) return;
  const std::uint32_t definition = find_definition(search, references.front());
  const auto* defined = dynamic_cast<const Part*>(slot_at(file_->entities, definition));
  for (const auto [part, number] : entity->part_numbers.entries()) {
    const auto component = component_at(*entity, *part, style, defined);
    if (!component) continue;
    const std::uint32_t shape = references.size() < 2 ? 0 : number_in(*part, references[1]);
    blocks_[part->list_position].push_back({*component, shape, number_in(*part, definition)});
  }
}

std::span<const std::uint32_t> PlacedInput::records_of(const Part& part) const {
  const std::size_t first = first_record_[part.list_position];
  return std::span(records_).subspan(first, first_record_[part.list_position + 1] - first);
}

std::span<const PlacedBlock> PlacedInput::blocks_of(const Part& part) const {
  return blocks_[part.list_position];
}

std::uint32_t PlacedInput::number_in(Part& part, std::uint32_t id) const {
  if (id >= file_->entities.size()) return 0;
  const Entity* entity = file_->entities[id];
  return entity == nullptr ? 0 : entity->part_numbers.number_or_zero(&part);
}

}  // namespace Kessel
