// Walks along placed components, and boxes around them.
#include <algorithm>

#include "kessel/drawing.h"

namespace Kessel {

namespace {

/// Which parts have lines, or components that have.
std::vector<bool> parts_with_lines(const Drawing& drawing) {
  const std::size_t count = drawing.parts.size();
  std::vector<std::vector<std::size_t>> used_in(count);
  std::vector<std::size_t> open;
  std::vector<bool> has_lines(count);
  for (std::size_t part = 0; part < count; ++part) {
    for (const PlacedComponent& component : drawing.parts[part].components) {
      if (!component.closes_cycle) used_in[component.part].push_back(part);
    }
    if (drawing.parts[part].lines.empty()) continue;
    has_lines[part] = true;
    open.push_back(part);
  }
  while (!open.empty()) {
    const std::size_t part = open.back();
    open.pop_back();
    for (const std::size_t user : used_in[part]) {
      if (has_lines[user]) continue;
      has_lines[user] = true;
      open.push_back(user);
    }
  }
  return has_lines;
}

std::int32_t colour_below(std::int32_t outer, std::int32_t own) {
  return outer != NO_COLOUR ? outer : own;
}

/// Goes depth first, without recursion.
class PlaceWalk {
 public:
  PlaceWalk(const Drawing& drawing, std::size_t from)
      : drawing_(drawing), has_lines_(parts_with_lines(drawing)) {
    if (from < drawing.parts.size() && has_lines_[from]) enter(from, {}, NO_COLOUR);
  }

  bool is_done() const { return levels_.empty(); }
  PlacedPart here() const {
    const Level& level = levels_.back();
    return {level.part, level.matrix, level.colour, path_};
  }
  void go_on() {
    while (!levels_.empty()) {
      Level& level = levels_.back();
      const auto& components = drawing_.parts[level.part].components;
      const std::size_t position = level.next++;
      if (position >= components.size()) {
        levels_.pop_back();
        if (!path_.empty()) path_.pop_back();
        continue;
      }
      const PlacedComponent& component = components[position];
      if (component.closes_cycle || !has_lines_[component.part]) continue;
      path_.push_back(position);
      enter(component.part, level.matrix.after(component.matrix),
            colour_below(level.colour, component.colour));
      return;
    }
  }

 private:
  struct Level {
    std::size_t part;
    Matrix3x4 matrix;
    std::int32_t colour;
    std::size_t next = 0;
  };
  void enter(std::size_t part, const Matrix3x4& matrix, std::int32_t colour) {
    levels_.push_back({part, matrix, colour});
  }

  const Drawing& drawing_;
  std::vector<bool> has_lines_;
  std::vector<Level> levels_;
  std::vector<std::size_t> path_;
};

void add_moved(const Box3& box, const Matrix3x4& matrix, Box3& sum) {
  if (box.is_empty()) return;
  for (int corner = 0; corner < 8; ++corner) {
    sum.add(
        matrix.apply({(corner & 1 ? box.high : box.low)[0], (corner & 2 ? box.high : box.low)[1],
                      (corner & 4 ? box.high : box.low)[2]}));
  }
}

/// Around the boxes of the components, those of deeper levels first.
Box3 loose_box(const Drawing& drawing, std::size_t from) {
  enum class State : unsigned char { unknown, open, known };
  std::vector<State> states(drawing.parts.size(), State::unknown);
  std::vector<Box3> boxes(drawing.parts.size());
  std::vector<std::size_t> open{from};
  while (!open.empty()) {
    const std::size_t part = open.back();
    const DrawnPart& drawn = drawing.parts[part];
    if (states[part] == State::unknown) {
      states[part] = State::open;
      for (const PlacedComponent& component : drawn.components) {
        const bool is_new = states[component.part] == State::unknown;
        if (!component.closes_cycle && is_new) open.push_back(component.part);
      }
      continue;
    }
    open.pop_back();
    if (states[part] == State::known) continue;
    states[part] = State::known;
    boxes[part] = drawn.box;
    for (const PlacedComponent& component : drawn.components) {
      if (component.closes_cycle) continue;
      add_moved(boxes[component.part], component.matrix, boxes[part]);
    }
  }
  return boxes[from];
}

}  // namespace

bool visit_places(const Drawing& drawing, std::size_t from, std::uint64_t limit,
                  const std::function<void(const PlacedPart&)>& visit) {
  std::uint64_t count = 0;
  for (PlaceWalk walk(drawing, from); !walk.is_done(); walk.go_on()) {
    if (count++ == limit) return false;
    visit(walk.here());
  }
  return true;
}

Box3 whole_box(const Drawing& drawing, std::size_t part) {
  constexpr std::uint64_t MOST_PLACES = 1'000'000;
  constexpr std::uint64_t MOST_POINTS = 100'000'000;
  if (part >= drawing.parts.size()) return {};
  Box3 box;
  std::uint64_t places = 0;
  std::uint64_t points = 0;
  for (PlaceWalk walk(drawing, part); !walk.is_done(); walk.go_on()) {
    const PlacedPart here = walk.here();
    const DrawnPart& drawn = drawing.parts[here.part];
    points += drawn.points.size();
    if (++places > MOST_PLACES || points > MOST_POINTS) return loose_box(drawing, part);
    for (const Point3& point : drawn.points) box.add(here.matrix.apply(point));
  }
  return box;
}

}  // namespace Kessel
