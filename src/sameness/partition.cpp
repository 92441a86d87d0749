#include "sameness/partition.h"

#include <algorithm>
#include <bit>

#include "sameness/hash.h"

namespace Kessel::Sameness {

namespace {

/// Fills `nodes` with all nodes, by ascending colour, then by themselves. Colours are hashes: there
/// are as many drawers for what they begin with as there are nodes, and few nodes in most of them.
void sort_by_colour(Column<Node>& nodes, const Column<std::uint64_t>& colours) {
  const int bits = std::max(1, static_cast<int>(std::bit_width(colours.size())) - 1);
  const auto drawer_of = [&](Node node) {
    return static_cast<std::size_t>(colours[node] >> (64 - bits));
  };
  Column<std::uint32_t> ends((std::size_t{1} << bits) + 1);
  for (Node node = 0; node < colours.size(); ++node) ++ends[drawer_of(node) + 1];
  for (std::size_t i = 1; i < ends.size(); ++i) ends[i] += ends[i - 1];
  for (Node node = 0; node < colours.size(); ++node) nodes[ends[drawer_of(node)]++] = node;
  std::uint32_t begin = 0;
  for (const std::uint32_t end : ends) {
    std::sort(nodes.begin() + begin, nodes.begin() + end, [&](Node x, Node y) {
      return colours[x] != colours[y] ? colours[x] < colours[y] : x < y;
    });
    begin = end;
  }
}

}  // namespace

Partition::Partition(const Graph& a, const Graph& b) : lengths_(a.size()), is_queued_(a.size()) {
  for (const Side side : {A, B}) {
    OneSide& one = sides_[side];
    one.graph = side == A ? &a : &b;
    one.nodes = Column<Node>(one.graph->size());
    one.places = Column<std::uint32_t>(one.graph->size());
    one.cells = Column<Cell>(one.graph->size());
  }
}

bool Partition::begin(const Column<std::uint64_t>& a, const Column<std::uint64_t>& b) {
  if (a.size() != b.size()) return false;
  sort_by_colour(sides_[A].nodes, a);
  sort_by_colour(sides_[B].nodes, b);
  Cell cell = 0;
  for (std::uint32_t place = 0; place < a.size(); ++place) {
    const std::uint64_t colour = a[sides_[A].nodes[place]];
    if (b[sides_[B].nodes[place]] != colour) return false;
    if (colour != a[sides_[A].nodes[cell]]) cell = place;
    if (cell == place) enqueue(cell);
    ++lengths_[cell];
    for (OneSide& side : sides_) {
      side.places[side.nodes[place]] = place;
      side.cells[side.nodes[place]] = cell;
    }
  }
  return true;
}

void Partition::enqueue(Cell cell) {
  if (is_queued_[cell]) return;
  is_queued_[cell] = true;
  queue_.push_back(cell);
}

bool Partition::refine() {
  for (OneSide& side : sides_) {
    // Most graphs need none.
    if (side.sums.empty()) side.sums = Column<std::uint64_t>(side.graph->size());
  }
  while (!queue_.empty()) {
    const Cell splitter = queue_.back();
    queue_.pop_back();
    is_queued_[splitter] = false;
    for (OneSide& side : sides_) gather(side, splitter);
    if (split_touched()) continue;
    forget_touched();
    for (const Cell cell : queue_) is_queued_[cell] = false;
    queue_.clear();
    return false;
  }
  return true;
}

/// Sums up, for every node, its edges to and from the splitter's.
void Partition::gather(OneSide& side, Cell splitter) {
  const auto members = side.nodes.part(splitter, std::size_t{splitter} + lengths_[splitter]);
  for (const Node node : members) {
    add(side, side.graph->users(node), 0);
    add(side, side.graph->references(node), 1);
  }
}

void Partition::add(OneSide& side, std::span<const Edge> edges, std::uint64_t direction) {
  work_ += edges.size() + 1;
  for (const Edge& edge : edges) {
    if (side.sums[edge.node] == 0) side.touched.push_back(edge.node);
    // Never 0, so that a sum of 0 means untouched, but for a chance that costs a repeat only.
    side.sums[edge.node] += mixed(2 * std::uint64_t{edge.label} + direction + 1);
  }
}

bool Partition::split_touched() {
  for (OneSide& side : sides_) {
    std::sort(side.touched.begin(), side.touched.end(), [&](Node x, Node y) {
      if (side.cells[x] != side.cells[y]) return side.cells[x] < side.cells[y];
      return side.sums[x] != side.sums[y] ? side.sums[x] < side.sums[y] : x < y;
    });
    side.touched.erase(std::unique(side.touched.begin(), side.touched.end()), side.touched.end());
  }
  const std::vector<Node>& a = sides_[A].touched;
  const std::vector<Node>& b = sides_[B].touched;
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (sides_[A].cells[a[i]] != sides_[B].cells[b[i]]) return false;
    if (sides_[A].sums[a[i]] != sides_[B].sums[b[i]]) return false;
  }
  for (std::size_t begin = 0; begin < a.size();) {
    const Cell cell = sides_[A].cells[a[begin]];
    std::size_t end = begin;
    while (end < a.size() && sides_[A].cells[a[end]] == cell) ++end;
    if (lengths_[cell] > 1) {
      split(cell, std::span(a).subspan(begin, end - begin),
            std::span(b).subspan(begin, end - begin));
    }
    begin = end;
  }
  forget_touched();
  return true;
}

/// Splits `cell` by the sums of those of its nodes that were touched, which are sorted by them and
/// have the same ones on both sides.
void Partition::split(Cell cell, std::span<const Node> a, std::span<const Node> b) {
  const std::uint32_t length = lengths_[cell];
  const auto untouched = static_cast<std::uint32_t>(length - a.size());
  const Column<std::uint64_t>& sums = sides_[A].sums;
  if (untouched == 0 && sums[a.front()] == sums[a.back()]) return;
  move_behind(sides_[A], cell, a);
  move_behind(sides_[B], cell, b);

  std::uint32_t largest = untouched;
  Cell largest_part = cell;
  const std::size_t first_split = trail_.size();
  for (std::size_t begin = 0; begin < a.size();) {
    std::size_t end = begin;
    while (end < a.size() && sums[a[end]] == sums[a[begin]]) ++end;
    const auto part = static_cast<Cell>(cell + untouched + begin);
    const auto part_length = static_cast<std::uint32_t>(end - begin);
    lengths_[part] = part_length;
    if (part != cell) trail_.push_back({cell, part});
    if (part_length > largest) {
      largest = part_length;
      largest_part = part;
    }
    for (std::size_t i = begin; i < end; ++i) {
      sides_[A].cells[a[i]] = part;
      sides_[B].cells[b[i]] = part;
    }
    begin = end;
  }
  if (untouched != 0) lengths_[cell] = untouched;
  // All parts but the largest tell everything, unless the whole has yet to be looked at.
  const bool was_queued = is_queued_[cell];
  if (was_queued || largest_part != cell) enqueue(cell);
  for (std::size_t i = first_split; i < trail_.size(); ++i) {
    if (was_queued || trail_[i].part != largest_part) enqueue(trail_[i].part);
  }
}

/// Puts the touched nodes of a cell, in their order, behind its others.
void Partition::move_behind(OneSide& side, Cell cell, std::span<const Node> touched) {
  std::uint32_t place = cell + lengths_[cell];
  for (std::size_t i = touched.size(); i-- > 0;) {
    const Node node = touched[i];
    const Node other = side.nodes[--place];
    const std::uint32_t from = side.places[node];
    side.nodes[from] = other;
    side.places[other] = from;
    side.nodes[place] = node;
    side.places[node] = place;
  }
}

void Partition::forget_touched() {
  for (OneSide& side : sides_) {
    for (const Node node : side.touched) side.sums[node] = 0;
    side.touched.clear();
  }
}

void Partition::pair(Node a, Node b) {
  const Cell whole = cell(A, a);
  const std::uint32_t length = lengths_[whole];
  if (length == 1) return;
  move_behind(sides_[A], whole, {&a, 1});
  move_behind(sides_[B], whole, {&b, 1});
  const Cell single = whole + length - 1;
  lengths_[whole] = length - 1;
  lengths_[single] = 1;
  sides_[A].cells[a] = single;
  sides_[B].cells[b] = single;
  trail_.push_back({whole, single});
  enqueue(single);
}

void Partition::go_back(std::size_t mark) {
  for (; trail_.size() > mark; trail_.pop_back()) {
    const Split& split = trail_.back();
    for (OneSide& side : sides_) {
      const auto part = side.nodes.part(split.part, std::size_t{split.part} + lengths_[split.part]);
      for (const Node node : part) side.cells[node] = split.from;
    }
    lengths_[split.from] += lengths_[split.part];
  }
}

}  // namespace Kessel::Sameness
