// Any bytes as a file, drawn: bad geometry is counted, and never more.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "fuzz/expect.h"
#include "kessel/drawing.h"
#include "kessel/errors.h"
#include "kessel/picture.h"
#include "support/scratch_folder.h"

namespace Kessel::test {
namespace {

constexpr std::uint64_t MEMORY = 64 << 20;
constexpr std::uint64_t MOST_PLACES = 1000;
constexpr std::uint64_t MOST_POINTS = 200'000;

bool is_finite(const Point3& point) {
  return std::all_of(point.begin(), point.end(), [](double x) { return std::isfinite(x); });
}

/// Whether the box holds the point, and is no larger than its points make it.
void check_box(const DrawnPart& part) {
  Box3 box;
  for (const Point3& point : part.points) {
    expect(is_finite(point), "every point is somewhere");
    box.add(point);
  }
  expect(box.low == part.box.low && box.high == part.box.high, "the box is that of the points");
}

void check_lines(const DrawnPart& part) {
  std::size_t next = 0;
  for (const DrawnLine& line : part.lines) {
    expect(line.first == next && line.count >= 2, "lines stand behind each other");
    expect(line.colour >= NO_COLOUR && line.colour <= 0xFFFFFF, "a colour is one");
    next += line.count;
  }
  expect(next == part.points.size(), "every point is in a line");
}

void check_drawing(const Drawing& drawing) {
  expect(drawing.parts.size() == drawing.assembly.parts.size(), "each part is drawn");
  std::uint64_t points = 0;
  for (std::size_t i = 0; i < drawing.parts.size(); ++i) {
    const DrawnPart& part = drawing.parts[i];
    check_box(part);
    check_lines(part);
    points += part.points.size();
    for (const PlacedComponent& component : part.components) {
      expect(component.part < drawing.parts.size(), "a component is a part");
      const auto& rows = component.matrix.rows;
      expect(std::all_of(rows.begin(), rows.end(), [](double x) { return std::isfinite(x); }),
             "a component is somewhere");
    }
    whole_box(drawing, i);
  }
  expect(points <= MOST_POINTS, "there are no more points than may be");
  if (drawing.parts.empty()) return;
  std::uint64_t places = 0;
  const bool all = visit_places(drawing, 0, MOST_PLACES, [&](const PlacedPart& place) {
    expect(place.part < drawing.parts.size(), "a place is a part's");
    ++places;
  });
  expect(places <= MOST_PLACES && (all || places == MOST_PLACES), "the limit of places holds");
}

/// Draws with a memory limit, which may refuse the input.
void check_drawn(const Options& reading) {
  DrawingOptions fineness;
  fineness.most_points = MOST_POINTS;
  try {
    check_drawing(read_drawing("in.stp", fineness, reading));
  } catch (const InputError& error) {
    expect(!std::string_view(error.what()).empty(), "a refusal has a sentence");
  }
}

void check_picture() {
  PictureOptions options;
  options.memory_limit = MEMORY;
  options.replace = true;
  try {
    const Picture picture = draw_picture("in.stp", "out.svg", options);
    expect(std::filesystem::file_size("out.svg") == picture.bytes, "the size is as it says");
    expect(picture.bytes <= (4u << 20), "a picture is small");
    const std::string text = read_file("out.svg");
    expect(text.find("nan") == std::string::npos || !picture.name.empty(), "coordinates count");
    expect(text.ends_with("</svg>\n"), "a picture is whole");
  } catch (const InputError& error) {
    expect(!std::string_view(error.what()).empty(), "a refusal has a sentence");
  }
}

}  // namespace
}  // namespace Kessel::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Kessel;
  using namespace Kessel::test;
  static const ScratchFolder folder;
  folder.write("in.stp", {reinterpret_cast<const char*>(data), size});
  Options reading;
  for (const std::uint64_t limit : {MEMORY, std::uint64_t{20'000}}) {
    reading.memory_limit = limit;
    check_drawn(reading);
  }
  check_picture();
  return 0;
}
