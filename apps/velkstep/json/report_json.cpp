// The data of the report page.
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <vector>

#include "formats/findings.h"
#include "formats/page_lines.h"
#include "json/documents.h"
#include "json/json_line.h"
#include "kessel/assembly.h"
#include "kessel/drawing.h"
#include "kessel/overview.h"
#include "kessel/summary.h"
#include "run/with_input.h"
#include "run/words.h"
#include "text/part_label.h"

namespace Velkstep {

namespace {

/// What all lines of a page may take, before base 64 makes them a third longer.
constexpr std::uint64_t MOST_LINE_BYTES = 7'000'000;

Json uses_on_page(const std::vector<Kessel::PartUse>& uses) {
  Json list = Json::array();
  for (const Kessel::PartUse& use : uses) {
    Json entry = {{"part", use.part}, {"count", use.count}};
    if (use.closes_cycle) entry["closes_cycle"] = true;
    list.push_back(std::move(entry));
  }
  return list;
}

Json header_on_page(const Kessel::Summary& summary) {
  Json units = Json::array();
  for (const Kessel::UnitUse& unit : summary.length_units) units.push_back(unit.name);
  const Kessel::Header& header = summary.header;
  return {{"system", header.originating_system},
          {"preprocessor", header.preprocessor_version},
          {"authors", header.authors},
          {"organisations", header.organisations},
          {"time", header.time_stamp},
          {"schemas", header.schemas},
          {"units", units},
          {"bytes", summary.bytes},
          {"records", summary.records}};
}

Json findings_on_page(const std::vector<Kessel::Finding>& findings) {
  Json list = Json::array();
  for (const Kessel::Finding& finding : findings) {
    list.push_back({{"severity", word_of(finding.severity)},
                    {"sentence", finding.sentence},
                    {"file", finding.file},
                    {"line", finding.line},
                    {"column", finding.column}});
  }
  return list;
}

Json part_on_page(const Kessel::PartInfo& part, const Kessel::WrittenFile* file) {
  Json entry;
  entry["record"] = part.record == 0 ? Json() : Json(std::to_string(part.record));
  entry["id"] = part.id;
  entry["name"] = part.name;
  entry["kind"] = role_name(part.role);
  entry["file"] = file == nullptr ? std::string() : file->path.string();
  entry["records"] = file == nullptr ? Json() : Json(file->records);
  entry["bytes"] = file == nullptr ? Json() : Json(file->bytes);
  if (!part.external_file.empty()) entry["external_file"] = part.external_file;
  entry["total"] = total_of(part);  // Text, since numbers of a script end at 2^53.
  entry["components"] = uses_on_page(part.components);
  entry["used_in"] = uses_on_page(part.used_in);
  return entry;
}

/// To seven digits, which is what a reader of the page can see.
Json rounded(double number) {
  if (number == 0 || !std::isfinite(number)) return 0;
  const double scale = std::pow(10.0, 6 - std::floor(std::log10(std::fabs(number))));
  const double shorter = std::round(number * scale) / scale;
  return std::isfinite(shorter) ? shorter : number;
}

Json box_on_page(const Kessel::Box3& box) {
  Json list = Json::array();
  for (const double number : box.low) list.push_back(rounded(number));
  for (const double number : box.high) list.push_back(rounded(number));
  return list;
}

/// Where components stand on the page: by part and position in the drawing, as far as asked.
class PlacesOnPage {
 public:
  explicit PlacesOnPage(const Kessel::Drawing& drawing)
      : drawing_(drawing), places_(drawing.parts.size()) {}

  /// The way `path` from a part down as the page counts it; nothing where it shows no such place.
  std::optional<std::vector<std::size_t>> way(std::size_t part,
                                              const std::vector<std::size_t>& path) {
    std::vector<std::size_t> way;
    for (const std::size_t position : path) {
      const Kessel::PlacedComponent& component = drawing_.parts[part].components[position];
      if (!is_shown(component)) return std::nullopt;
      way.push_back(of(part)[position]);
      part = component.part;
    }
    return way;
  }

 private:
  const std::vector<std::size_t>& of(std::size_t part) {
    std::vector<std::size_t>& places = places_[part];
    if (!places.empty()) return places;
    std::size_t shown = 0;
    for (const Kessel::PlacedComponent& component : drawing_.parts[part].components) {
      places.push_back(shown);
      if (is_shown(component)) ++shown;
    }
    return places;
  }

  const Kessel::Drawing& drawing_;
  std::vector<std::vector<std::size_t>> places_;
};

/// What a part says of components of its components.
Json styles_on_page(const Kessel::DrawnPart& part, std::size_t index, PlacesOnPage& places) {
  Json styles = Json::array();
  for (const Kessel::PlacedStyle& style : part.styled) {
    const auto way = places.way(index, style.path);
    if (!way) continue;
    Json entry = {{"path", *way}};
    if (style.colour != Kessel::NO_COLOUR) entry["colour"] = style.colour;
    if (style.is_hidden) entry["hidden"] = true;
    styles.push_back(std::move(entry));
  }
  return styles;
}

/// What a part looks like: `box` is around it with its components, `frame` around its own lines.
void add_picture(Json& entry, const Kessel::Drawing& drawing, std::size_t index,
                 const PageLines& lines, PlacesOnPage& places) {
  const Kessel::DrawnPart& part = drawing.parts[index];
  const Kessel::Box3 whole = whole_box(drawing, index);
  if (!whole.is_empty()) entry["box"] = box_on_page(whole);
  if (!part.unit.empty()) entry["unit"] = part.unit;
  if (part.dropped + lines.left_out > 0) entry["not_drawn"] = part.dropped + lines.left_out;
  if (!lines.base64.empty()) {
    entry["frame"] = box_on_page(part.box);
    entry["lines"] = lines.base64;
  }
  if (lines.colour != Kessel::NO_COLOUR) entry["colour"] = lines.colour;
  Json placed = Json::array();
  Json colours = Json::object();
  for (const Kessel::PlacedComponent& component : part.components) {
    if (!is_shown(component)) continue;
    if (component.colour != Kessel::NO_COLOUR) {
      colours[std::to_string(placed.size())] = component.colour;
    }
    placed.push_back(component.part);
  }
  if (placed.empty()) return;
  entry["placed"] = std::move(placed);
  entry["placements"] = placements_for_page(part);
  if (!colours.empty()) entry["placed_colours"] = std::move(colours);
  Json styles = styles_on_page(part, index, places);
  if (!styles.empty()) entry["styled"] = std::move(styles);
}

/// The split's, for one who looks at its input.
Kessel::Options options_of(const SplitArguments& arguments) {
  Kessel::Options options = arguments.options;
  options.input_folder = folder_of_input(arguments.in);
  return options;
}

Json parts_on_page(const FinishedSplit& split, const Kessel::Assembly& assembly) {
  std::map<std::uint64_t, const Kessel::WrittenFile*> files;  // by record, 0 for a generated root
  for (const Kessel::WrittenFile& file : split.files) {
    if (!file.is_copy) files[file.part] = &file;
  }
  Json parts = Json::array();
  for (const Kessel::PartInfo& part : assembly.parts) {
    const auto found = files.find(part.record);
    parts.push_back(part_on_page(part, found == files.end() ? nullptr : found->second));
  }
  return parts;
}

Json page_data(const FinishedSplit& split, const SplitArguments& arguments) {
  using Lines = std::optional<Kessel::DrawingOptions>;
  const Kessel::Overview overview = Kessel::read_overview(
      split.input, arguments.pictures ? Lines(Kessel::DrawingOptions()) : Lines(),
      options_of(arguments));
  const Kessel::Drawing& drawing = overview.drawing;
  Json json;
  json["input"] = std::filesystem::path(shown_name(arguments.in)).filename().string();
  json["assemblies"] = word_of(arguments.options.assemblies);
  json["names"] = word_of(arguments.options.names);
  json["header"] = header_on_page(overview.summary);
  json["findings"] = findings_on_page(overview.findings);
  json["roots"] = drawing.assembly.roots;
  json["parts"] = parts_on_page(split, drawing.assembly);
  json["pictures"] = overview.is_drawn ? "drawn" : arguments.pictures ? "no room" : "not asked";
  if (!overview.is_drawn) return json;
  const PageDrawing lines = lines_for_page(drawing, MOST_LINE_BYTES);
  json["colours"] = lines.colours;
  PlacesOnPage places(drawing);
  for (std::size_t i = 0; i < lines.parts.size(); ++i) {
    add_picture(json["parts"][i], drawing, i, lines.parts[i], places);
  }
  return json;
}

/// JSON that no name in it can end as an element of a page. "<" occurs in strings only.
std::string json_for_page(const Json& json) {
  std::string text;
  for (const char c : json_line(json)) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

}  // namespace

std::string report_json(const FinishedSplit& split, const SplitArguments& arguments) {
  return json_for_page(page_data(split, arguments));
}

}  // namespace Velkstep
