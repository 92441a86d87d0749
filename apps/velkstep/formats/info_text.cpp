// A file's header and counts as text.
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <vector>

#include "formats/info_formats.h"
#include "text/counted.h"

namespace Velkstep {

namespace {

std::string joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) {
    if (text.empty()) continue;
    if (!all.empty()) all += ", ";
    all += text;
  }
  return all;
}

/// "INCH (0.0254 m)"; the unit itself alone where it is what it is measured in.
std::string units(const std::vector<Kessel::UnitUse>& uses, const char* measured_in) {
  std::vector<std::string> texts;
  for (const Kessel::UnitUse& use : uses) {
    std::string text = use.name.empty() ? "(no name)" : use.name;
    if (use.factor != 0 && use.factor != 1) {
      char digits[32];
      const auto end =
          std::to_chars(digits, digits + sizeof digits, use.factor, std::chars_format::general, 6);
      text += " (" + std::string(digits, end.ptr) + " " + measured_in + ")";
    }
    if (uses.size() > 1) text += " in " + counted(use.contexts, "context", "contexts");
    texts.push_back(text);
  }
  return joined(texts);
}

class Lines {
 public:
  explicit Lines(const Colours& colours) : colours_(colours) {}

  void add(std::string_view label, std::string_view value) {
    if (value.empty()) return;
    constexpr std::size_t LABEL_WIDTH = 20;
    text_ += "  " + colours_.dim(padded_right(label, LABEL_WIDTH)) + printable(value) + '\n';
  }
  std::string text() && { return std::move(text_); }

 private:
  const Colours& colours_;
  std::string text_;
};

std::string_view without_spaces_around(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

void add_header(Lines& lines, const Kessel::Header& header) {
  const auto add = [&](std::string_view label, std::string_view value) {
    lines.add(label, without_spaces_around(value));
  };
  add("Name", header.name);
  add("Description", joined(header.description));
  add("Time", header.time_stamp);
  add("Authors", joined(header.authors));
  add("Organisations", joined(header.organisations));
  add("Originating system", header.originating_system);
  add("Preprocessor", header.preprocessor_version);
  add("Authorisation", header.authorisation);
  add("Schema", joined(header.schemas));
  add("Implementation", header.implementation_level);
}

void add_types(Lines& lines, const std::vector<Kessel::TypeCount>& types) {
  const std::size_t shown = std::min(types.size(), MOST_FREQUENT);
  std::size_t width = 0;
  for (std::size_t i = 0; i < shown; ++i) width = std::max(width, grouped(types[i].records).size());
  for (std::size_t i = 0; i < shown; ++i) {
    lines.add(i == 0 ? "Most frequent" : "",
              padded_left(grouped(types[i].records), width) + "  " + types[i].type);
  }
}

void add_references(Lines& lines, const std::vector<Kessel::ReferencedFile>& references) {
  if (references.empty()) return;
  lines.add("Refers to", counted(references.size(), "file", "files"));
  for (const Kessel::ReferencedFile& file : references) {
    lines.add("", file.is_there ? file.name : file.name + " (not there)");
  }
}

}  // namespace

std::string info_text(const Kessel::Summary& summary, const std::string& name,
                      const Colours& colours) {
  Lines lines(colours);
  add_header(lines, summary.header);
  lines.add("Size", counted(summary.bytes, "byte", "bytes"));
  lines.add("Records",
            grouped(summary.records) + " of " + counted(summary.types.size(), "type", "types"));
  add_types(lines, summary.types);
  lines.add("Parts", grouped(summary.parts));
  std::string assemblies = grouped(summary.assemblies);
  if (summary.assemblies_with_bodies != 0) {
    assemblies += ", " + grouped(summary.assemblies_with_bodies) + " with bodies of their own";
  }
  lines.add("Assemblies", assemblies);
  lines.add("Depth", counted(summary.depth, "level", "levels"));
  lines.add("Length", units(summary.length_units, "m"));
  lines.add("Plane angle", units(summary.plane_angle_units, "rad"));
  add_references(lines, summary.references);
  return colours.bold(printable(name)) + '\n' + std::move(lines).text();
}

}  // namespace Velkstep
