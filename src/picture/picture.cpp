// The entry point of hosts.
#include "kessel/picture.h"

#include <system_error>

#include "encoding/utf8_path.h"
#include "extract/part_names.h"
#include "findings/named_errors.h"
#include "inspection/drawn_file.h"
#include "kessel/errors.h"
#include "output/finished_file.h"
#include "output/own_input.h"
#include "picture/sketch.h"
#include "picture/svg.h"

namespace Kessel {

namespace {

/// A third of a pixel where the part fills the picture.
constexpr double TOLERANCE = 3e-4;

/// The part that is asked for: one that has the name, else the root.
std::size_t find_part(const DrawnFile& drawn, const std::string& name) {
  const InspectedFile& file = drawn.file;
  if (!name.empty()) return PartNames(file.instances, file.products).find(name);
  const std::vector<std::size_t>& roots = drawn.drawing.assembly.roots;
  return roots.empty() ? drawn.drawing.parts.size() : roots.front();
}

/// What a part is called in pictures.
std::string title_of(const PartInfo& part, const std::filesystem::path& in) {
  if (!part.name.empty()) return part.name;
  if (!part.id.empty()) return part.id;
  if (part.record != 0) return "#" + std::to_string(part.record);
  return utf8_of_path(in.stem());
}

/// The edges that are missing in what is drawn of a part.
std::uint64_t dropped_below(const Drawing& drawing, std::size_t from) {
  std::uint64_t dropped = 0;
  std::vector<bool> is_known(drawing.parts.size());
  std::vector<std::size_t> open{from};
  is_known[from] = true;
  while (!open.empty()) {
    const DrawnPart& part = drawing.parts[open.back()];
    open.pop_back();
    dropped += part.dropped;
    for (const PlacedComponent& component : part.components) {
      if (is_known[component.part]) continue;
      is_known[component.part] = true;
      open.push_back(component.part);
    }
  }
  return dropped;
}

}  // namespace

Picture draw_picture(const std::filesystem::path& in, const std::filesystem::path& out,
                     const PictureOptions& options) {
  refuse_to_replace(in, out);
  Options reading;
  reading.memory_limit = options.memory_limit;
  reading.progress = options.progress;
  DrawingOptions fineness;
  fineness.tolerance = TOLERANCE;
  const DrawnFile drawn(in, fineness, reading);
  const std::size_t part = with_named_errors(in, [&] { return find_part(drawn, options.part); });
  Picture picture;
  Sketch lines;
  if (part < drawn.drawing.parts.size()) {
    const PartInfo& info = drawn.drawing.assembly.parts[part];
    picture.record = info.record;
    picture.name = title_of(info, in);
    picture.dropped = dropped_below(drawn.drawing, part);
  } else {
    picture.name = title_of({}, in);  // A file without parts.
  }
  lines = sketch(drawn.drawing, part, Projection(options.view));
  FinishedFile file(out, options.replace);
  write_svg(lines, picture.name, file.stream());
  picture.places = lines.places;
  picture.lines = lines.lines.size();
  picture.left_out = lines.left_out;
  picture.bytes = file.finish();
  return picture;
}

}  // namespace Kessel
