// The lines of a drawing as the report page holds them.
#include "formats/page_lines.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <map>
#include <span>
#include <utility>

#include "text/base64.h"

namespace Velkstep {

namespace {

using Kessel::DrawnPart;
using Kessel::Point3;

constexpr std::uint32_t NO_PAGE_COLOUR = 65535;
constexpr std::size_t MOST_POINTS_OF_A_LINE = 65535;
constexpr double COARSEST = 0.01;  // of the diagonal of a part's box

double distance_between(const Point3& a, const Point3& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

/// From a point to the straight piece between two others.
double distance_to_piece(const Point3& p, const Point3& a, const Point3& b) {
  double along = 0;
  double square = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    along += (p[i] - a[i]) * (b[i] - a[i]);
    square += (b[i] - a[i]) * (b[i] - a[i]);
  }
  const double t = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
  return distance_between(
      p, {a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])});
}

struct PageLine {
  std::vector<Point3> points;
  std::int32_t colour = Kessel::NO_COLOUR;
  double length = 0;

  std::uint64_t bytes() const { return 4 + 6 * points.size(); }
};

/// The line through fewer of its points, from which none is further than `tolerance` (the method of
/// Ramer, Douglas and Peucker).
void make_coarser(PageLine& line, double tolerance) {
  std::vector<bool> kept(line.points.size());
  kept.front() = kept.back() = true;
  std::vector<std::pair<std::size_t, std::size_t>> waiting = {{0, line.points.size() - 1}};
  while (!waiting.empty()) {
    const auto [first, last] = waiting.back();
    waiting.pop_back();
    std::size_t furthest = first;
    double most = tolerance;
    for (std::size_t i = first + 1; i < last; ++i) {
      const double away = distance_to_piece(line.points[i], line.points[first], line.points[last]);
      if (away > most) {
        most = away;
        furthest = i;
      }
    }
    if (furthest == first) continue;
    kept[furthest] = true;
    waiting.emplace_back(first, furthest);
    waiting.emplace_back(furthest, last);
  }
  std::size_t count = 0;
  for (std::size_t i = 0; i < kept.size(); ++i) {
    if (kept[i]) line.points[count++] = line.points[i];
  }
  line.points.resize(count);
}

std::uint64_t bytes_of(const std::vector<PageLine>& lines) {
  std::uint64_t sum = 0;
  for (const PageLine& line : lines) sum += line.bytes();
  return sum;
}

/// A part's lines, the longest first.
std::vector<PageLine> lines_of(const DrawnPart& part) {
  std::vector<PageLine> lines;
  lines.reserve(part.lines.size());
  for (const Kessel::DrawnLine& drawn : part.lines) {
    const std::span<const Point3> points = Kessel::Drawing::points_of(part, drawn);
    PageLine line = {.points = {points.begin(), points.end()}, .colour = drawn.colour};
    for (std::size_t i = 1; i < points.size(); ++i) {
      line.length += distance_between(points[i - 1], points[i]);
    }
    lines.push_back(std::move(line));
  }
  std::stable_sort(lines.begin(), lines.end(),
                   [](const PageLine& a, const PageLine& b) { return a.length > b.length; });
  return lines;
}

/// Makes the lines fit into so many bytes. Returns how many were left out.
std::uint64_t make_fit(std::vector<PageLine>& lines, const Kessel::Box3& box,
                       std::uint64_t most_bytes) {
  const double diagonal = distance_between(box.low, box.high);
  for (double tolerance = 0.002; bytes_of(lines) > most_bytes && tolerance <= COARSEST;
       tolerance *= 1.5) {
    for (PageLine& line : lines) make_coarser(line, tolerance * diagonal);
  }
  std::uint64_t bytes = 0;
  std::size_t fit = 0;
  while (fit < lines.size() && bytes + lines[fit].bytes() <= most_bytes) {
    bytes += lines[fit++].bytes();
  }
  const std::uint64_t left_out = lines.size() - fit;
  lines.resize(fit);
  return left_out;
}

/// The largest share such that all parts, none of which gets more, take `most_bytes` together.
std::uint64_t share_of_each(std::vector<std::uint64_t> wanted, std::uint64_t most_bytes) {
  std::sort(wanted.begin(), wanted.end());
  std::uint64_t left = most_bytes;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const std::uint64_t share = left / (wanted.size() - i);
    if (wanted[i] > share) return share;
    left -= wanted[i];
  }
  return most_bytes;
}

/// The colours of all lines, each with its position.
class Palette {
 public:
  std::uint32_t position_of(std::int32_t colour) {
    if (colour == Kessel::NO_COLOUR) return NO_PAGE_COLOUR;
    const auto found = positions_.find(colour);
    if (found != positions_.end()) return found->second;
    if (colours_.size() == NO_PAGE_COLOUR) return NO_PAGE_COLOUR;
    const auto position = static_cast<std::uint32_t>(colours_.size());
    colours_.push_back(colour);
    positions_.emplace(colour, position);
    return position;
  }
  std::vector<std::int32_t> take() { return std::move(colours_); }

 private:
  std::map<std::int32_t, std::uint32_t> positions_;
  std::vector<std::int32_t> colours_;
};

void add_number(std::vector<std::uint8_t>& bytes, std::uint32_t number, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

void add_point(std::vector<std::uint8_t>& bytes, const Point3& point, const Kessel::Box3& box) {
  for (std::size_t i = 0; i < 3; ++i) {
    const double side = box.high[i] - box.low[i];
    const double part = side > 0 ? std::clamp((point[i] - box.low[i]) / side, 0.0, 1.0) : 0;
    add_number(bytes, static_cast<std::uint32_t>(std::lround(part * 65535)), 2);
  }
}

/// How many lines there are, how many points each has with its colour, and all points: so a script
/// has the points without a copy. Longer lines than a 16-bit number counts become several that
/// meet.
std::vector<std::uint8_t> bytes_for_page(const std::vector<PageLine>& lines,
                                         const Kessel::Box3& box, Palette& palette) {
  std::vector<std::uint8_t> heads;
  std::vector<std::uint8_t> points;
  for (const PageLine& line : lines) {
    const std::size_t last = line.points.size() - 1;
    for (std::size_t first = 0; first < last; first += MOST_POINTS_OF_A_LINE - 1) {
      const std::size_t count = std::min(MOST_POINTS_OF_A_LINE, line.points.size() - first);
      add_number(heads, static_cast<std::uint32_t>(count), 2);
      add_number(heads, palette.position_of(line.colour), 2);
      for (std::size_t i = first; i < first + count; ++i) add_point(points, line.points[i], box);
    }
  }
  std::vector<std::uint8_t> bytes;
  if (heads.empty()) return bytes;
  add_number(bytes, static_cast<std::uint32_t>(heads.size() / 4), 4);
  bytes.insert(bytes.end(), heads.begin(), heads.end());
  bytes.insert(bytes.end(), points.begin(), points.end());
  return bytes;
}

/// The colour of most of the lines' length; that without colour does not count.
std::int32_t main_colour(const std::vector<PageLine>& lines) {
  std::map<std::int32_t, double> lengths;
  for (const PageLine& line : lines) {
    if (line.colour != Kessel::NO_COLOUR) lengths[line.colour] += line.length;
  }
  std::int32_t colour = Kessel::NO_COLOUR;
  double most = -1;
  for (const auto& [candidate, length] : lengths) {
    if (length <= most) continue;
    most = length;
    colour = candidate;
  }
  return colour;
}

}  // namespace

PageDrawing lines_for_page(const Kessel::Drawing& drawing, std::uint64_t most_bytes) {
  std::vector<std::uint64_t> wanted;
  for (const DrawnPart& part : drawing.parts) {
    wanted.push_back(4 * part.lines.size() + 6 * part.points.size());
  }
  const std::uint64_t share = share_of_each(wanted, most_bytes);
  PageDrawing page;
  Palette palette;
  for (const DrawnPart& part : drawing.parts) {
    std::vector<PageLine> lines = lines_of(part);
    PageLines& on_page = page.parts.emplace_back();
    on_page.colour = main_colour(lines);
    on_page.left_out = make_fit(lines, part.box, share);
    on_page.base64 = base64(bytes_for_page(lines, part.box, palette));
  }
  page.colours = palette.take();
  return page;
}

bool is_shown(const Kessel::PlacedComponent& component) {
  return !component.closes_cycle && !component.is_hidden;
}

std::string placements_for_page(const DrawnPart& part) {
  std::vector<std::uint8_t> bytes;
  for (const Kessel::PlacedComponent& component : part.components) {
    if (!is_shown(component)) continue;
    for (const double number : component.matrix.rows) {
      add_number(bytes, std::bit_cast<std::uint32_t>(static_cast<float>(number)), 4);
    }
  }
  return base64(bytes);
}

}  // namespace Velkstep
