#include "c_interface/overview_rows.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "encoding/utf8_path.h"

namespace Kessel {

namespace {

const char* first_of(const std::vector<std::string>& texts) {
  return texts.empty() ? "" : texts.front().c_str();
}

kessel_role role_for(PartRole role) {
  switch (role) {
    case PartRole::part:
      return KESSEL_PART;
    case PartRole::assembly:
      return KESSEL_ASSEMBLY;
    default:
      return KESSEL_ASSEMBLY_WITH_BODIES;
  }
}

}  // namespace

OverviewRows::OverviewRows(Overview overview) : is_there_(true), all_(std::move(overview)) {
  for (const PartInfo& part : all_.drawing.assembly.parts) {
    files_.push_back(utf8_of_path(part.file));
  }
  if (!all_.is_drawn) return;
  for (std::size_t i = 0; i < parts(); ++i) boxes_.push_back(whole_box(all_.drawing, i));
}

kessel_summary OverviewRows::summary() const {
  const Summary& summary = all_.summary;
  const Header& header = summary.header;
  const std::vector<std::size_t>& roots = all_.drawing.assembly.roots;
  kessel_summary row = {};
  row.bytes = summary.bytes;
  row.records = summary.records;
  row.parts = summary.parts;
  row.assemblies = summary.assemblies;
  row.assemblies_with_bodies = summary.assemblies_with_bodies;
  row.depth = summary.depth;
  row.root = roots.empty() ? SIZE_MAX : roots.front();
  row.name = header.name.c_str();
  row.description = first_of(header.description);
  row.time_stamp = header.time_stamp.c_str();
  row.author = first_of(header.authors);
  row.organisation = first_of(header.organisations);
  row.preprocessor_version = header.preprocessor_version.c_str();
  row.originating_system = header.originating_system.c_str();
  row.schema = first_of(header.schemas);
  row.length_unit = "";
  if (!summary.length_units.empty()) {
    row.length_unit = summary.length_units.front().name.c_str();
    row.length_unit_metres = summary.length_units.front().factor;
  }
  row.is_drawn = all_.is_drawn ? 1 : 0;
  return row;
}

kessel_part OverviewRows::part(std::size_t i) const {
  const PartInfo& info = all_.drawing.assembly.parts[i];
  kessel_part row = {};
  row.record = info.record;
  row.id = info.id.c_str();
  row.name = info.name.c_str();
  row.description = info.description.c_str();
  row.role = role_for(info.role);
  row.file = files_[i].c_str();
  row.external_file = info.external_file.c_str();
  row.total = info.total;
  row.components = components(i);
  row.unit = "";
  if (!all_.is_drawn) return row;
  const DrawnPart& drawn = all_.drawing.parts[i];
  row.unit = drawn.unit.c_str();
  row.unit_metres = drawn.unit_metres;
  row.lines = drawn.lines.size();
  row.dropped = drawn.dropped;
  const Box3& box = boxes_[i];
  if (box.is_empty()) return row;
  row.has_box = 1;
  std::copy(box.low.begin(), box.low.end(), row.low);
  std::copy(box.high.begin(), box.high.end(), row.high);
  return row;
}

std::size_t OverviewRows::components(std::size_t part) const {
  if (part >= parts()) return 0;
  if (all_.is_drawn) return all_.drawing.parts[part].components.size();
  std::size_t count = 0;
  for (const PartUse& use : all_.drawing.assembly.parts[part].components) count += use.count;
  return count;
}

std::size_t OverviewRows::lines(std::size_t part) const {
  return all_.is_drawn && part < parts() ? all_.drawing.parts[part].lines.size() : 0;
}

kessel_component OverviewRows::component(std::size_t part, std::size_t i) const {
  kessel_component row = {};
  if (all_.is_drawn) {
    const PlacedComponent& placed = all_.drawing.parts[part].components[i];
    row.part = placed.part;
    row.closes_cycle = placed.closes_cycle ? 1 : 0;
    row.usage = placed.usage;
    row.is_placed = placed.is_placed ? 1 : 0;
    row.is_hidden = placed.is_hidden ? 1 : 0;
    std::copy(placed.matrix.rows.begin(), placed.matrix.rows.end(), row.matrix);
    row.colour = placed.colour;
    return row;
  }
  for (const PartUse& use : all_.drawing.assembly.parts[part].components) {
    if (i >= use.count) {
      i -= use.count;
      continue;
    }
    row.part = use.part;
    row.closes_cycle = use.closes_cycle ? 1 : 0;
    break;
  }
  return row;
}

kessel_line OverviewRows::line(std::size_t part, std::size_t i) const {
  const DrawnPart& drawn = all_.drawing.parts[part];
  const DrawnLine& line = drawn.lines[i];
  return {line.record, line.colour, drawn.points[line.first].data(), line.count};
}

}  // namespace Kessel
