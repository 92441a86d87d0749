// Which usages there are.
#include <algorithm>
#include <charconv>

#include "products/parameter_reader.h"
#include "products/structure.h"

namespace Kessel {

namespace {

// The types that say "this is a direct component of that"; of complex instances one keyword counts.
constexpr std::string_view USAGES[] = {"NEXT_ASSEMBLY_USAGE_OCCURRENCE", "ASSEMBLY_COMPONENT_USAGE",
                                       "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE"};
// Their kin that speak of deeper levels.
constexpr std::string_view DEEPER[] = {"SPECIFIED_HIGHER_USAGE_OCCURRENCE",
                                       "PROMISSORY_USAGE_OCCURRENCE",
                                       "MULTI_LEVEL_REFERENCE_DESIGNATOR"};

/// The number in "COUNT_MEASURE(4.)" or the like, the first parameter of a measure with unit.
double value_of(const Instances& instances, Index measure) {
  const std::string_view typed = ParameterReader(instances, measure, "MEASURE_WITH_UNIT").raw(0);
  const std::size_t open = typed.find('(');
  const std::size_t begin =
      open == std::string_view::npos ? 0 : typed.find_first_not_of(" \t\r\n", open + 1);
  double value = 0;
  if (begin != std::string_view::npos) {
    std::from_chars(typed.data() + begin, typed.data() + typed.size(), value);
  }
  return value;
}

void read_texts(const Instances& instances, Usage& usage) {
  const Index record = usage.record;
  const bool is_complex = instances.types().is_complex(instances.type(record));
  const ParameterReader related(instances, record, "PRODUCT_DEFINITION_RELATIONSHIP");
  usage.id = related.text(0);
  usage.name = related.text(1);
  usage.description = related.text(2);
  const ParameterReader component(instances, record, "ASSEMBLY_COMPONENT_USAGE");
  usage.designator = component.text(is_complex ? 0 : 5);
  if (!instances.is(record, "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE")) return;
  const ParameterReader quantified(instances, record, "QUANTIFIED_ASSEMBLY_COMPONENT_USAGE");
  const Index quantity = quantified.record(is_complex ? 0 : 6);
  if (quantity == NO_RECORD) return;
  const double value = value_of(instances, quantity);
  if (value > 0) usage.quantity = value;
}

struct PlacementRecords {
  Index record;
  Index relationship;
};

/// The placements by the shape of the usage that they are for.
std::unordered_map<Index, std::vector<PlacementRecords>> find_placements(
    const Instances& instances) {
  std::unordered_map<Index, std::vector<PlacementRecords>> placements;
  for (const Index record : instances.kept_with("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION")) {
    const ParameterReader parameters(instances, record, "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION");
    placements[parameters.record(1)].push_back({record, parameters.record(0)});
  }
  return placements;
}

}  // namespace

std::vector<Index> usage_records(const Instances& instances) {
  std::vector<Index> records;
  for (const std::string_view keyword : USAGES) {
    const std::vector<Index> some = instances.kept_with(keyword);
    records.insert(records.end(), some.begin(), some.end());
  }
  std::erase_if(records, [&](Index record) {
    return std::any_of(std::begin(DEEPER), std::end(DEEPER),
                       [&](std::string_view keyword) { return instances.is(record, keyword); });
  });
  std::sort(records.begin(), records.end());
  records.erase(std::unique(records.begin(), records.end()), records.end());
  return records;
}

namespace {

/// What an end of a usage is: a definition, or what an occurrence of one is an occurrence of
/// (PRODUCT_DEFINITION_OCCURRENCE, ISO 10303-41); NO_RECORD for anything else.
Index end_of_usage(const Instances& instances, Index end) {
  constexpr int MOST = 16;  // Occurrences of occurrences might go round in circles.
  for (int i = 0; i < MOST && end != NO_RECORD; ++i) {
    if (!instances.is(end, "PRODUCT_DEFINITION_OCCURRENCE")) {
      return is_definition(instances, end) ? end : NO_RECORD;
    }
    end = ParameterReader(instances, end, "PRODUCT_DEFINITION_OCCURRENCE").record(3);
  }
  return NO_RECORD;
}

UsageEnds ends_of(const Instances& instances, Index record) {
  const ParameterReader related(instances, record, "PRODUCT_DEFINITION_RELATIONSHIP");
  return {end_of_usage(instances, related.record(3)), end_of_usage(instances, related.record(4))};
}

using Placements = std::unordered_map<Index, std::vector<PlacementRecords>>;

/// The usage `record` with its texts and what places it.
Usage usage_of(const Instances& instances, const Shapes& shapes, const Placements& placements,
               Index record) {
  Usage usage;
  usage.record = record;
  read_texts(instances, usage);
  if (const auto found = shapes.of.find(record); found != shapes.of.end()) {
    usage.shapes = found->second;
  }
  for (const Index shape : usage.shapes) {
    if (const auto links = shapes.links.find(shape); links != shapes.links.end()) {
      usage.links.insert(usage.links.end(), links->second.begin(), links->second.end());
    }
    const auto placed = placements.find(shape);
    if (placed == placements.end()) continue;
    for (const PlacementRecords& placement : placed->second) {
      usage.placements.push_back(placement.record);
      if (placement.relationship != NO_RECORD) {
        usage.relationships.push_back(placement.relationship);
      }
    }
  }
  return usage;
}

}  // namespace

UsagesWithEnds find_usages(const Instances& instances, const Shapes& shapes) {
  const Placements placements = find_placements(instances);
  UsagesWithEnds found;
  for (const Index record : usage_records(instances)) {
    const UsageEnds ends = ends_of(instances, record);
    if (ends.assembly == NO_RECORD || ends.component == NO_RECORD) continue;
    found.usages.push_back(usage_of(instances, shapes, placements, record));
    found.ends.push_back(ends);
  }
  for (const std::string_view keyword : DEEPER) {
    for (const Index record : instances.kept_with(keyword)) {
      const UsageEnds ends = ends_of(instances, record);
      if (ends.assembly == NO_RECORD || ends.component == NO_RECORD) continue;
      found.deeper.push_back(usage_of(instances, shapes, placements, record));
      found.deeper_ends.push_back(ends);
    }
  }
  return found;
}

}  // namespace Kessel
