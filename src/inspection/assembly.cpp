// From a file that was read to its product structure as plain data.
#include "inspection/assembly.h"

#include "inspection/parameters.h"
#include "inspection/walk.h"

namespace Kessel {

namespace {

/// The number at reference `i` of `record`; 0 where there is none.
std::uint32_t reference_of(const Entity& record, std::size_t i) {
  const auto references = record.references();
  return i < references.size() ? references[i] : 0;
}

/// The same for record `number`, which may not be there.
std::uint32_t reference_of(const Store& file, std::uint32_t number, std::size_t i) {
  const Entity* record = number < file.entities.size() ? file.entities[number] : nullptr;
  return record == nullptr ? 0 : reference_of(*record, i);
}

/// The string that a kept text ends with.
std::string last_string(std::string_view text) {
  const std::size_t begin = text.find('\'');
  return begin == std::string_view::npos ? std::string() : text_value(text.substr(begin));
}

/// Reads what the product says: the definition's formation leads to it.
void name_by_product(const InspectedFile& inspected, const Part& part, PartInfo& info) {
  const std::uint32_t product = reference_of(inspected.file(), reference_of(part, 0), 0);
  const auto parameters = parameters_of(inspected.texts().find(product), "PRODUCT");
  info.id = text_value(parameter(parameters, 0));
  info.name = text_value(parameter(parameters, 1));
  info.description = text_value(parameter(parameters, 2));
}

/// Takes the name of the representation that a mapped item shows (ISO 10303-43), else its own.
void name_by_representation(const InspectedFile& inspected, const Part& part, PartInfo& info) {
  const KeptTexts& texts = inspected.texts();
  const std::uint32_t shown = reference_of(inspected.file(), reference_of(part, 0), 1);
  info.name = last_string(texts.find(shown));
  if (info.name.empty()) info.name = last_string(texts.find(info.record));
}

PartRole role_of(const Part& part) {
  if (part.children.empty())
    return part.part_kind == ASSEMBLY_PART ? PartRole::assembly : PartRole::part;
  return part.part_kind == LEAF_PART ? PartRole::assembly_with_bodies : PartRole::assembly;
}

PartInfo info_of(const InspectedFile& inspected, const Part& part) {
  PartInfo info;
  info.record = inspected.number_of(part);
  info.role = role_of(part);
  info.file = part.path;
  if (part.type() == "MAPPED_ITEM") {
    name_by_representation(inspected, part, info);
  } else if (info.record != 0) {
    name_by_product(inspected, part, info);
  }
  return info;
}

/// Turns lists of components with repeats into lists with counts.
class ComponentCounter {
 public:
  explicit ComponentCounter(std::size_t parts) : places_(parts, 0) {}

  std::vector<PartUse> count(const std::vector<Part*>& children) {
    std::vector<PartUse> uses;
    for (const Part* child : children) {
      std::size_t& place = places_[child->list_position];
      if (place == 0) {
        uses.push_back({child->list_position, 0, false});
        place = uses.size();
      }
      ++uses[place - 1].count;
    }
    for (const PartUse& use : uses) places_[use.part] = 0;
    return uses;
  }

 private:
  std::vector<std::size_t> places_;  // by part: where it stands in the list, from 1; 0 for nowhere
};

/// The components of a generated root: every part that nothing uses.
std::vector<PartUse> tops_of(const Store& file) {
  std::vector<PartUse> tops;
  for (const Part* part : file.parts) {
    if (part->parents.empty() && part != file.root)
      tops.push_back({part->list_position, 1, false});
  }
  return tops;
}

}  // namespace

Assembly assembly_of(const InspectedFile& inspected) {
  const Store& file = inspected.file();
  Assembly assembly;
  assembly.parts.reserve(file.parts.size());
  ComponentCounter counter(file.parts.size());
  for (const Part* part : file.parts) {
    PartInfo& info = assembly.parts.emplace_back(info_of(inspected, *part));
    info.components = info.record == 0 ? tops_of(file) : counter.count(part->children);
  }
  if (file.root != nullptr) assembly.roots.push_back(file.root->list_position);
  complete(assembly);
  return assembly;
}

Assembly read_assembly(const std::filesystem::path& in, const Options& options) {
  return assembly_of(InspectedFile(in, options));
}

}  // namespace Kessel
