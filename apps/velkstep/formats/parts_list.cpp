// The flat list of parts with total quantities.
#include <algorithm>
#include <array>
#include <cstdio>
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

constexpr std::array HEADINGS = {"Quantity", "Name", "Id", "Kind", "Number", "File"};
constexpr std::array SIZE_HEADINGS = {"X", "Y", "Z", "Unit"};
using ListRow = std::vector<std::string>;

ListRow headings(bool with_sizes) {
  ListRow row(HEADINGS.begin(), HEADINGS.end());
  if (with_sizes) row.insert(row.end(), SIZE_HEADINGS.begin(), SIZE_HEADINGS.end());
  return row;
}

/// `sizes` is parallel to the parts; empty for none.
ListRow row_of(const Kessel::Assembly& assembly, const PartInfo& part, const PartSizes& sizes) {
  ListRow row = {total_of(part),     title_of(part),
                 printable(part.id), std::string(role_name(part.role)),
                 record_of(part),    file_of(part)};
  if (!sizes.empty()) {
    const auto& size = sizes[static_cast<std::size_t>(&part - assembly.parts.data())];
    row.insert(row.end(), size.begin(), size.end());
  }
  return row;
}

std::string in_small_letters(const PartInfo& part) {
  std::string title = title_of(part);
  for (char& c : title) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return title;
}

std::vector<const PartInfo*> listed_parts(const Kessel::Assembly& assembly, PartsOrder order) {
  std::vector<const PartInfo*> parts;
  for (const PartInfo& part : assembly.parts) {
    if (is_listed(part)) parts.push_back(&part);
  }
  const auto by_name = [](const PartInfo* a, const PartInfo* b) {
    return in_small_letters(*a) < in_small_letters(*b);
  };
  const auto by_quantity = [](const PartInfo* a, const PartInfo* b) { return a->total > b->total; };
  if (order != PartsOrder::file) std::stable_sort(parts.begin(), parts.end(), by_name);
  if (order == PartsOrder::quantity) std::stable_sort(parts.begin(), parts.end(), by_quantity);
  return parts;
}

/// A length with as many digits as people read.
std::string shown_length(double length) {
  char text[32];
  std::snprintf(text, sizeof text, "%.5g", length);
  return text;
}

}  // namespace

PartSizes sizes_of(const Kessel::Drawing& drawing) {
  PartSizes sizes(drawing.parts.size());
  for (std::size_t part = 0; part < sizes.size(); ++part) {
    if (!is_listed(drawing.assembly.parts[part])) continue;
    const Kessel::Box3 box = Kessel::whole_box(drawing, part);
    if (box.is_empty()) continue;
    for (std::size_t i = 0; i < 3; ++i) sizes[part][i] = shown_length(box.high[i] - box.low[i]);
    sizes[part][3] = printable(drawing.parts[part].unit);
  }
  return sizes;
}

std::string parts_list_text(const Kessel::Assembly& assembly, PartsOrder order,
                            const Colours& colours, const PartSizes& sizes) {
  std::vector<ListRow> rows = {headings(!sizes.empty())};
  for (const PartInfo* part : listed_parts(assembly, order)) {
    rows.push_back(row_of(assembly, *part, sizes));
  }
  std::vector<std::size_t> widths(rows.front().size());
  for (const ListRow& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], display_width(row[i]));
  }
  std::string out;
  for (const ListRow& row : rows) {
    std::string line = padded_left(row[0], widths[0]);
    for (std::size_t i = 1; i < row.size(); ++i) line += "  " + padded_right(row[i], widths[i]);
    line.erase(line.find_last_not_of(' ') + 1);
    out += (&row == &rows.front() ? colours.bold(line) : line) + '\n';
  }
  return out;
}

std::string parts_list_csv(const Kessel::Assembly& assembly, PartsOrder order,
                           const std::string& input, const PartSizes& sizes) {
  std::string out;
  for (const PartInfo* part : listed_parts(assembly, order)) {
    ListRow row = row_of(assembly, *part, sizes);
    row[0] = std::to_string(part->total);
    row[4] = std::to_string(part->record);
    std::vector<std::string> fields(row.begin(), row.end());
    if (!input.empty()) fields.insert(fields.begin(), printable(input));
    out += csv_record(fields);
  }
  return out;
}

std::string parts_list_csv_heading(const std::string& input, bool with_sizes) {
  std::vector<std::string> fields;
  if (!input.empty()) fields.push_back(input);
  for (std::string heading : headings(with_sizes)) {
    heading.front() = static_cast<char>(heading.front() - 'A' + 'a');
    fields.push_back(heading);
  }
  return csv_record(fields);
}

}  // namespace Velkstep
