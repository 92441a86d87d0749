// Any bytes as a file, drawn: bad geometry is counted, and never more.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

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

/// Whether lengths of this size leave a double room to say where within.
bool is_ordinary(const Box3& box) {
  for (std::size_t i = 0; i < 3; ++i) {
    if (!(std::abs(box.low[i]) < 1e100 && std::abs(box.high[i]) < 1e100)) return false;
  }
  return true;
}

double largest_of(const Box3& box) {
  double largest = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    largest = std::max({largest, std::abs(box.low[i]), std::abs(box.high[i])});
  }
  return largest;
}

/// The box around a part with its components is that of all points that a walk comes to.
void check_whole_box(const Drawing& drawing, std::size_t part) {
  Box3 walked;
  std::uint64_t points = 0;
  const bool all = visit_places(drawing, part, MOST_PLACES, [&](const PlacedPart& place) {
    expect(place.part < drawing.parts.size(), "a place is a part's");
    points += drawing.parts[place.part].points.size();
    if (points > MOST_POINTS) return;
    for (const Point3& point : drawing.parts[place.part].points) {
      walked.add(place.matrix.apply(point));
    }
  });
  const Box3 whole = whole_box(drawing, part);
  if (!all || points > MOST_POINTS || !is_ordinary(walked) || !is_ordinary(whole)) return;
  expect(walked.is_empty() == whole.is_empty(), "what is seen has a box");
  if (walked.is_empty()) return;
  const double room = 1e-9 * largest_of(walked);
  for (std::size_t i = 0; i < 3; ++i) {
    expect(std::abs(walked.low[i] - whole.low[i]) <= room &&
               std::abs(walked.high[i] - whole.high[i]) <= room,
           "the box of all is around all, and no larger");
  }
}

/// With few points allowed, the first lines are there as they are, and the others are counted.
void check_few_points(const Drawing& all, const Options& reading) {
  DrawingOptions fineness;
  fineness.most_points = 20;
  const Drawing few = read_drawing("in.stp", fineness, reading);
  std::uint64_t points = 0;
  for (std::size_t i = 0; i < few.parts.size(); ++i) {
    const DrawnPart& some = few.parts[i];
    expect(some.lines.size() + some.dropped == all.parts[i].lines.size() + all.parts[i].dropped,
           "what there is no room for is counted");
    points += some.points.size();
  }
  expect(points <= fineness.most_points, "there are no more points than may be");
}

/// How fine lines are changes neither what is drawn nor, but for the pieces, how large it is.
void check_fineness(const Drawing& coarse, const Options& reading) {
  DrawingOptions fineness;
  fineness.most_points = MOST_POINTS;
  fineness.tolerance = 1e-5;
  const Drawing fine = read_drawing("in.stp", fineness, reading);
  for (std::size_t i = 0; i < fine.parts.size(); ++i) {
    const DrawnPart& one = fine.parts[i];
    const DrawnPart& same = coarse.parts[i];
    const bool is_whole = one.lines.size() == same.lines.size() && one.dropped == same.dropped;
    if (!is_whole || one.lines.empty() || !is_ordinary(one.box) || !is_ordinary(same.box)) continue;
    double diagonal = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      diagonal = std::hypot(diagonal, one.box.high[k] - one.box.low[k]);
    }
    const double room = 2e-3 * diagonal + 1e-9 * largest_of(one.box);
    for (std::size_t k = 0; k < 3; ++k) {
      expect(std::abs(one.box.low[k] - same.box.low[k]) <= room &&
                 std::abs(one.box.high[k] - same.box.high[k]) <= room,
             "a box is that of the curves");
    }
  }
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
    check_whole_box(drawing, i);
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
    const Drawing drawing = read_drawing("in.stp", fineness, reading);
    check_drawing(drawing);
    check_few_points(drawing, reading);
    check_fineness(drawing, reading);
  } catch (const InputError& error) {
    expect(!std::string_view(error.what()).empty(), "a refusal has a sentence");
  }
}

/// Numbers of a path from `at` on, up to a letter or quotation mark.
std::vector<long> numbers_at(const std::string& text, std::size_t& at) {
  std::vector<long> numbers;
  while (text[at] == ' ' || text[at] == '-' || (text[at] >= '0' && text[at] <= '9')) {
    char* end = nullptr;
    numbers.push_back(std::strtol(&text[at], &end, 10));
    expect(end != &text[at], "a path has whole numbers");
    at = static_cast<std::size_t>(end - text.data());
  }
  return numbers;
}

/// Every line is on the paper, and there are as many as are told.
void check_paths(const std::string& text, const Picture& picture) {
  std::size_t at = text.find("viewBox=\"0 0 ");
  expect(at != std::string::npos, "a picture has a size");
  at += 13;
  const std::vector<long> paper = numbers_at(text, at);
  expect(paper.size() == 2 && paper[0] <= 8000 && paper[1] <= 6000, "a picture fits on the paper");
  std::uint64_t lines = 0;
  for (at = 0; (at = text.find(" d=\"M", at)) != std::string::npos;) {
    at += 4;
    while (text[at] == 'M') {
      ++lines;
      std::vector<long> here = numbers_at(text, ++at);
      expect(here.size() == 2 && text[at] == 'l', "a line begins somewhere");
      const std::vector<long> steps = numbers_at(text, ++at);
      expect(steps.size() % 2 == 0, "steps go right and down");
      for (std::size_t i = 0; i < steps.size(); ++i) {
        here[i % 2] += steps[i];
        expect(here[i % 2] >= 0 && here[i % 2] <= paper[i % 2], "a line is on the paper");
      }
    }
    expect(text[at] == '"', "a path ends");
  }
  expect(lines == picture.lines, "lines are counted");
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
    expect(text.ends_with("</svg>\n"), "a picture is whole");
    check_paths(text, picture);
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
