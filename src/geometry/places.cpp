// Walks along placed components, and boxes around them.
#include <algorithm>

#include "kessel/drawing.h"

namespace Kessel {

namespace {

bool is_entered(const PlacedComponent& component) {
  return !component.closes_cycle && !component.is_hidden;
}

/// The parts from `from` down, each once, behind the components that it enters.
std::vector<std::size_t> from_below(const Drawing& drawing, std::size_t from) {
  enum class State : unsigned char { unknown, open, known };
  std::vector<State> states(drawing.parts.size(), State::unknown);
  std::vector<std::size_t> order;
  std::vector<std::size_t> open{from};
  while (!open.empty()) {
    const std::size_t part = open.back();
    if (states[part] == State::unknown) {
      states[part] = State::open;
      for (const PlacedComponent& component : drawing.parts[part].components) {
        const bool is_new = states[component.part] == State::unknown;
        if (is_entered(component) && is_new) open.push_back(component.part);
      }
      continue;
    }
    open.pop_back();
    if (states[part] == State::known) continue;
    states[part] = State::known;
    order.push_back(part);
  }
  return order;
}

/// By part: whether it, or a component of it, has lines; as far as they are below `from`.
std::vector<bool> parts_with_lines(const Drawing& drawing, std::size_t from) {
  std::vector<bool> has_lines(drawing.parts.size());
  for (const std::size_t part : from_below(drawing, from)) {
    const DrawnPart& drawn = drawing.parts[part];
    has_lines[part] = !drawn.lines.empty() ||
                      std::any_of(drawn.components.begin(), drawn.components.end(),
                                  [&](const PlacedComponent& component) {
                                    return is_entered(component) && has_lines[component.part];
                                  });
  }
  return has_lines;
}

/// A colour, and at which level of a walk it was given: the upper one counts, and of one level what
/// speaks of less.
struct GivenColour {
  std::int32_t rgb = NO_COLOUR;
  std::size_t level = 0;

  void give(std::int32_t other, std::size_t at) {
    if (other == NO_COLOUR || (rgb != NO_COLOUR && level < at)) return;
    rgb = other;
    level = at;
  }
};

/// Goes depth first, without recursion.
class PlaceWalk {
 public:
  PlaceWalk(const Drawing& drawing, std::size_t from) : drawing_(drawing) {
    if (from >= drawing.parts.size()) return;
    has_lines_ = parts_with_lines(drawing, from);
    if (has_lines_[from]) levels_.push_back({from, {}, {}, {}});
  }

  bool is_done() const { return levels_.empty(); }
  PlacedPart here() const {
    const Level& level = levels_.back();
    return {level.part, level.matrix, level.colour.rgb, path_};
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
      if (!is_entered(component) || !has_lines_[component.part]) continue;
      if (enter(component, position)) return;
    }
  }

 private:
  /// A style that speaks of what is further below on this way.
  struct Waiting {
    const PlacedStyle* style;
    std::size_t begun;  ///< at which level
  };
  struct Level {
    std::size_t part;
    Matrix3x4 matrix;
    GivenColour colour;
    std::vector<Waiting> waiting;  // those of upper levels behind others
    std::size_t next = 0;
  };

  /// Returns false where the component is hidden there.
  bool enter(const PlacedComponent& component, std::size_t position) {
    const Level& above = levels_.back();
    const std::size_t depth = levels_.size() - 1;
    Level level{component.part, above.matrix.after(component.matrix), above.colour, {}};
    level.colour.give(component.colour, depth);
    bool is_hidden = false;
    const auto look_at = [&](const Waiting& one) {
      const std::size_t step = depth - one.begun;
      if (one.style->path[step] != position) return;
      if (step + 1 < one.style->path.size()) {
        level.waiting.push_back(one);
      } else {
        level.colour.give(one.style->colour, one.begun);
        is_hidden = is_hidden || one.style->is_hidden;
      }
    };
    for (const PlacedStyle& style : drawing_.parts[above.part].styled) look_at({&style, depth});
    for (const Waiting& one : above.waiting) look_at(one);
    if (is_hidden) return false;
    path_.push_back(position);
    levels_.push_back(std::move(level));
    return true;
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
  std::vector<Box3> boxes(drawing.parts.size());
  for (const std::size_t part : from_below(drawing, from)) {
    const DrawnPart& drawn = drawing.parts[part];
    boxes[part] = drawn.box;
    for (const PlacedComponent& component : drawn.components) {
      if (!is_entered(component)) continue;
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
  if (drawing.parts[part].components.empty()) return drawing.parts[part].box;
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
