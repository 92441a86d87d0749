// The entry point of hosts.
#include "kessel/picture.h"

#include <vector>

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

/// The part `from` and all below it, each once.
std::vector<std::size_t> parts_below(const Drawing& drawing, std::size_t from) {
  std::vector<std::size_t> below{from};
  std::vector<bool> is_known(drawing.parts.size());
  is_known[from] = true;
  for (std::size_t next = 0; next < below.size(); ++next) {
    for (const PlacedComponent& component : drawing.parts[below[next]].components) {
      if (is_known[component.part]) continue;
      is_known[component.part] = true;
      below.push_back(component.part);
    }
  }
  return below;
}

/// Counts what is missing in a picture of the part `from`.
void count_missing(const Drawing& drawing, std::size_t from, Picture& picture) {
  for (const std::size_t part : parts_below(drawing, from)) {
    const DrawnPart& drawn = drawing.parts[part];
    picture.dropped += drawn.dropped;
    const bool is_referred_to = !drawing.assembly.parts[part].external_file.empty();
    if (is_referred_to && drawn.lines.empty() && drawn.dropped == 0) ++picture.elsewhere;
  }
}

/// As far as they matter to reading.
Options reading_options(const PictureOptions& options) {
  Options reading;
  reading.memory_limit = options.memory_limit;
  reading.follow_references = options.follow_references;
  reading.follow_outside = options.follow_outside;
  reading.readable = options.readable;
  reading.input_folder = options.input_folder;
  reading.progress = options.progress;
  reading.warning = options.warning;
  return reading;
}

/// Refuses to replace what was read or is referred to.
void refuse_to_replace_inputs(const InspectedFile& file, const std::filesystem::path& out) {
  for (const std::filesystem::path& in : file.files) refuse_to_replace(in, out);
  refuse_to_replace_targets(file.folder, file.references, out);
}

}  // namespace

Picture draw_picture(const std::filesystem::path& in, const std::filesystem::path& out,
                     const PictureOptions& options) {
  refuse_to_replace(in, out);
  DrawingOptions fineness;
  fineness.tolerance = TOLERANCE;
  const DrawnFile drawn(in, fineness, reading_options(options));
  refuse_to_replace_inputs(drawn.file, out);
  const std::size_t part = with_named_errors(in, [&] { return find_part(drawn, options.part); });
  Picture picture;
  if (part < drawn.drawing.parts.size()) {
    const PartInfo& info = drawn.drawing.assembly.parts[part];
    picture.record = info.record;
    picture.name = title_of(info, in);
    count_missing(drawn.drawing, part, picture);
  } else {
    picture.name = title_of({}, in);  // A file without parts.
  }
  const Sketch lines = sketch(drawn.drawing, part, Projection(options.view));
  FinishedFile file(out, options.replace);
  write_svg(lines, picture.name, file.stream());
  picture.places = lines.places;
  picture.lines = lines.lines.size();
  picture.left_out = lines.left_out;
  picture.bytes = file.finish();
  return picture;
}

}  // namespace Kessel
