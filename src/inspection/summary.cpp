// What an exchange file says about itself, and what is in it.
#include "kessel/summary.h"

#include <system_error>

#include "inspection/assembly.h"
#include "inspection/header.h"
#include "inspection/inspected_file.h"
#include "inspection/units.h"

namespace Kessel {

namespace {

void count_parts(const Assembly& assembly, Summary& summary) {
  for (const PartInfo& part : assembly.parts) {
    if (part.record == 0) continue;
    ++(part.role == PartRole::part ? summary.parts : summary.assemblies);
    if (part.role == PartRole::assembly_with_bodies) ++summary.assemblies_with_bodies;
  }
  summary.depth = assembly.depth;
}

}  // namespace

Summary read_summary(const std::filesystem::path& in) {
  const InspectedFile inspected(in, Options());
  Summary summary;
  summary.header = read_header(inspected.header());
  std::error_code unknown;
  summary.bytes = std::filesystem::file_size(in, unknown);
  if (unknown) summary.bytes = 0;
  summary.types = inspected.types().sorted();
  for (const TypeCount& type : summary.types) summary.records += type.records;
  count_parts(assembly_of(inspected), summary);
  sum_up_units(inspected.texts(), inspected.unit_contexts(), summary);
  return summary;
}

}  // namespace Kessel
