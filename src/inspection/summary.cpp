// What an exchange file says about itself, and what is in it.
#include "inspection/summary.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <system_error>

#include "external/targets.h"
#include "findings/named_errors.h"
#include "inspection/assembly.h"
#include "inspection/header.h"
#include "inspection/units.h"

namespace Kessel {

namespace {

/// Counts all records, and those of each type, the most frequent first, equally frequent ones by
/// name. A record without a type is one of no type.
void count_records(const Instances& instances, Summary& summary) {
  std::vector<std::uint64_t> records(instances.types().size());
  for (Index record = 0; record < instances.size(); ++record) ++records[instances.type(record)];
  // "A(...)" and "(A(...))" have one name.
  std::map<std::string_view, std::uint64_t> by_name;
  for (TypeId type = TypeTable::FIRST_OF_RECORDS; type < instances.types().size(); ++type) {
    summary.records += records[type];
    if (records[type] != 0) by_name[instances.types().name(type)] += records[type];
  }
  by_name.erase("");
  std::vector<TypeCount>& counts = summary.types;
  for (const auto& [name, count] : by_name) counts.push_back({std::string(name), count});
  std::sort(counts.begin(), counts.end(), [](const TypeCount& a, const TypeCount& b) {
    return a.records != b.records ? a.records > b.records : a.type < b.type;
  });
}

void count_parts(const Assembly& assembly, Summary& summary) {
  for (const PartInfo& part : assembly.parts) {
    if (part.record == 0) continue;
    ++(part.role == PartRole::part ? summary.parts : summary.assemblies);
    if (part.role == PartRole::assembly_with_bodies) ++summary.assemblies_with_bodies;
  }
  summary.depth = assembly.depth;
}

void list_references(const InspectedFile& file, Summary& summary) {
  std::map<std::string_view, std::size_t> places;
  for (const ExternalReference& reference : file.references) {
    const Target target = find_target(file.folder, reference);
    const auto [place, is_new] = places.emplace(target.name->name, summary.references.size());
    if (is_new) summary.references.push_back({target.name->name, 0, target.is_there});
    ++summary.references[place->second].references;
  }
}

}  // namespace

Summary summary_of(const InspectedFile& file, const Assembly& assembly,
                   const std::filesystem::path& in) {
  Summary summary;
  summary.header = read_header(file.instances.header());
  std::error_code unknown;
  summary.bytes = std::filesystem::file_size(in, unknown);
  if (unknown) summary.bytes = 0;
  count_records(file.instances, summary);
  count_parts(assembly, summary);
  sum_up_units(file.instances, summary);
  list_references(file, summary);
  return summary;
}

Summary read_summary(const std::filesystem::path& in, const Options& options) {
  const InspectedFile file = with_named_errors(in, [&] { return InspectedFile(in, options); });
  return summary_of(file, assembly_of(file, options), in);
}

}  // namespace Kessel
