#include "picture/sketch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <unordered_map>

namespace Kessel {

namespace {

// Tenths of a pixel.
constexpr double WIDTH = 8000;
constexpr double HEIGHT = 6000;
constexpr std::int32_t MARGIN = 100;
constexpr std::int32_t FINEST = 4;    // steps of less are not seen
constexpr std::int64_t SMALLEST = 5;  // nor are lines in such a box

// What a picture can hold.
constexpr std::uint64_t MOST_PLACES = 200'000;
constexpr std::uint64_t MOST_POINTS_READ = 200'000'000;
constexpr std::size_t MOST_POINTS_SKETCHED = 8'000'000;
constexpr std::size_t MOST_POINTS = 300'000;

/// Goes through all lines at all places, as many as a picture can hold.
class PlacedLines {
 public:
  PlacedLines(const Drawing& drawing, std::size_t part) : drawing_(drawing), part_(part) {}

  template <class Visit>
  void visit(const Projection& projection, const Visit& visit_line) {
    places = 0;
    left_out = 0;
    std::uint64_t points = 0;
    std::vector<Projected> line;
    const bool is_all = visit_places(drawing_, part_, MOST_PLACES, [&](const PlacedPart& place) {
      const DrawnPart& drawn = drawing_.parts[place.part];
      points += drawn.points.size();
      if (points > MOST_POINTS_READ) {
        left_out += drawn.lines.size();
        return;
      }
      if (!drawn.lines.empty()) ++places;
      for (const DrawnLine& one : drawn.lines) {
        line.clear();
        for (const Point3& point : Drawing::points_of(drawn, one)) {
          line.push_back(projection(place.matrix.apply(point)));
        }
        visit_line(line, place.colour != NO_COLOUR ? place.colour : one.colour);
      }
    });
    if (!is_all) ++left_out;  // How many there are would take too long to count.
  }

  std::uint64_t places = 0;
  std::uint64_t left_out = 0;

 private:
  const Drawing& drawing_;
  std::size_t part_;
};

/// The box around everything on paper, and what fits it into the picture.
struct Fit {
  Projected low{INFINITY, INFINITY, INFINITY};
  Projected high{-INFINITY, -INFINITY, -INFINITY};
  double scale = 1;

  void add(const Projected& point) {
    low = {std::min(low.right, point.right), std::min(low.up, point.up),
           std::min(low.near, point.near)};
    high = {std::max(high.right, point.right), std::max(high.up, point.up),
            std::max(high.near, point.near)};
  }
  bool is_empty() const { return !(low.right <= high.right); }

  void finish() {
    const double across = high.right - low.right;
    const double upright = high.up - low.up;
    const double fit = std::min((WIDTH - 2 * MARGIN) / across, (HEIGHT - 2 * MARGIN) / upright);
    scale = std::isfinite(fit) && fit > 0 ? fit : 1;
  }
  SketchedPoint operator()(const Projected& point) const {
    return {static_cast<std::int32_t>(std::lround(scale * (point.right - low.right))) + MARGIN,
            static_cast<std::int32_t>(std::lround(scale * (high.up - point.up))) + MARGIN};
  }
};

std::int32_t step_between(const SketchedPoint& a, const SketchedPoint& b) {
  return std::max(std::abs(a.right - b.right), std::abs(a.down - b.down));
}

/// Appends a line without steps that nobody sees; the last point stays.
void sketch_line(const std::vector<Projected>& line, std::int32_t colour, const Fit& fit,
                 Sketch& sketch) {
  SketchedLine sketched{sketch.points.size(), 0, colour, 0, 0};
  SketchedPoint low = fit(line.front());
  SketchedPoint high = low;
  for (std::size_t i = 0; i < line.size(); ++i) {
    sketched.near += line[i].near / static_cast<double>(line.size());
    const SketchedPoint point = fit(line[i]);
    low = {std::min(low.right, point.right), std::min(low.down, point.down)};
    high = {std::max(high.right, point.right), std::max(high.down, point.down)};
    const bool is_first = sketch.points.size() == sketched.first;
    if (!is_first && step_between(sketch.points.back(), point) < FINEST) {
      // The end takes the place of what is so near to it, unless that is the beginning.
      if (i + 1 == line.size() && sketch.points.size() > sketched.first + 1) {
        sketch.points.back() = point;
      }
      continue;
    }
    sketch.points.push_back(point);
  }
  sketched.count = sketch.points.size() - sketched.first;
  sketched.size = std::int64_t{high.right - low.right} + (high.down - low.down);
  if (sketched.count < 2 || sketched.size < SMALLEST) {
    sketch.points.resize(sketched.first);
    return;
  }
  sketch.lines.push_back(sketched);
}

std::span<const SketchedPoint> points_of(const Sketch& sketch, const SketchedLine& line) {
  return std::span(sketch.points).subspan(line.first, line.count);
}

bool look_alike(std::span<const SketchedPoint> a, std::span<const SketchedPoint> b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end()) ||
         std::equal(a.begin(), a.end(), b.rbegin(), b.rend());
}

/// The same for a line and its reverse.
std::uint64_t hash_of(std::span<const SketchedPoint> points) {
  std::uint64_t sum = points.size();
  for (const SketchedPoint& point : points) {
    const std::uint64_t word =
        std::uint64_t(std::uint32_t(point.right)) << 32 | std::uint32_t(point.down);
    sum += (word ^ word >> 29) * 0x9E37'79B9'7F4A'7C15u;
  }
  return sum;
}

/// Of lines that cover each other, the first stays.
void drop_covered(Sketch& sketch) {
  std::unordered_multimap<std::uint64_t, std::size_t> seen;
  std::vector<SketchedLine> lines;
  for (const SketchedLine& line : sketch.lines) {
    const auto points = points_of(sketch, line);
    const std::uint64_t hash = hash_of(points);
    const auto [first, last] = seen.equal_range(hash);
    const bool is_covered = std::any_of(first, last, [&](const auto& other) {
      return look_alike(points, points_of(sketch, lines[other.second]));
    });
    if (is_covered) continue;
    seen.emplace(hash, lines.size());
    lines.push_back(line);
  }
  sketch.lines = std::move(lines);
}

/// Leaves out the smallest lines until the others are few enough.
void drop_smallest(Sketch& sketch) {
  std::size_t points = 0;
  for (const SketchedLine& line : sketch.lines) points += line.count;
  if (points <= MOST_POINTS) return;
  std::vector<std::size_t> order(sketch.lines.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return sketch.lines[a].size < sketch.lines[b].size;
  });
  std::vector<bool> is_out(order.size());
  for (std::size_t i = 0; points > MOST_POINTS; ++i) {
    is_out[order[i]] = true;
    points -= sketch.lines[order[i]].count;
    ++sketch.left_out;
  }
  std::size_t i = 0;
  std::erase_if(sketch.lines, [&](const SketchedLine&) { return is_out[i++]; });
}

}  // namespace

Sketch sketch(const Drawing& drawing, std::size_t part, const Projection& projection) {
  Sketch sketch;
  PlacedLines placed(drawing, part);
  Fit fit;
  placed.visit(projection, [&](const std::vector<Projected>& line, std::int32_t) {
    for (const Projected& point : line) fit.add(point);
  });
  sketch.width = sketch.height = 2 * MARGIN;
  if (fit.is_empty()) return sketch;
  fit.finish();
  const SketchedPoint corner = fit({fit.high.right, fit.low.up, 0});
  sketch.width = corner.right + MARGIN;
  sketch.height = corner.down + MARGIN;
  sketch.nearest = fit.high.near;
  sketch.farthest = fit.low.near;
  std::uint64_t beyond = 0;
  placed.visit(projection, [&](const std::vector<Projected>& line, std::int32_t colour) {
    if (sketch.points.size() + line.size() > MOST_POINTS_SKETCHED) {
      ++beyond;
    } else {
      sketch_line(line, colour, fit, sketch);
    }
  });
  sketch.places = placed.places;
  sketch.left_out = placed.left_out + beyond;
  std::stable_sort(sketch.lines.begin(), sketch.lines.end(),
                   [](const SketchedLine& a, const SketchedLine& b) { return a.near > b.near; });
  drop_covered(sketch);
  drop_smallest(sketch);
  return sketch;
}

}  // namespace Kessel
