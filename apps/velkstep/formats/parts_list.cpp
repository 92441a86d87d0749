// The flat list of parts with total quantities.
#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "formats/tree_formats.h"
#include "text/part_label.h"

namespace Velkstep {

namespace {

using Kessel::PartInfo;

/// Assemblies are not listed, their parts are; one with bodies of its own is both.
bool is_listed(const PartInfo& part) {
  return part.role != Kessel::PartRole::assembly;
}

/// A field as RFC 4180 has it.
std::string csv_field(const std::string& text) {
  if (text.find_first_of("\",\r\n") == std::string::npos) return text;
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + '"';
}

std::string csv_record(const std::vector<std::string>& fields) {
  std::string out;
  for (const std::string& field : fields) {
    if (!out.empty()) out += ',';
    out += csv_field(field);
  }
  return out + "\r\n";
}

constexpr std::size_t COLUMNS = 6;
using Row = std::array<std::string, COLUMNS>;

}  // namespace

std::string parts_list_text(const Kessel::Assembly& assembly, const Colours& colours) {
  std::vector<Row> rows = {{"Quantity", "Name", "Id", "Kind", "Record", "File"}};
  for (const PartInfo& part : assembly.parts) {
    if (!is_listed(part)) continue;
    rows.push_back({total_of(part), title_of(part), printable(part.id),
                    std::string(role_name(part.role)), record_of(part), file_of(part)});
  }
  std::array<std::size_t, COLUMNS> widths = {};
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < COLUMNS; ++i)
      widths[i] = std::max(widths[i], display_width(row[i]));
  }
  std::string out;
  for (const Row& row : rows) {
    std::string line = padded_left(row[0], widths[0]);
    for (std::size_t i = 1; i < COLUMNS; ++i) line += "  " + padded_right(row[i], widths[i]);
    line.erase(line.find_last_not_of(' ') + 1);
    out += (&row == &rows.front() ? colours.bold(line) : line) + '\n';
  }
  return out;
}

std::string parts_list_csv(const Kessel::Assembly& assembly) {
  std::string out = csv_record({"quantity", "name", "id", "description", "kind", "record", "file"});
  for (const PartInfo& part : assembly.parts) {
    if (!is_listed(part)) continue;
    out += csv_record({std::to_string(part.total), printable(part.name), printable(part.id),
                       printable(part.description), std::string(role_name(part.role)),
                       std::to_string(part.record), file_of(part)});
  }
  return out;
}

}  // namespace Velkstep
