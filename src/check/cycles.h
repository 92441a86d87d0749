// Finds cycles in graphs of any size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "instances/column.h"

namespace Kessel {

/// A set of nodes that all lead to each other.
struct Cycle {
  std::uint32_t lowest = 0;  ///< the lowest of them
  std::size_t size = 0;      ///< how many there are; 1 for a node that leads to itself
};

/// Finds the cycles among nodes below `size`. `successors(node)` gives a span of what leads on from
/// a node, and `node_of` the node that one of these leads to. Tarjan's algorithm with a stack of
/// its own: linear, however long a way is.
template <class Successors, class NodeOf>
class CycleSearch {
 public:
  CycleSearch(std::size_t size, Successors successors, NodeOf node_of)
      : successors_(successors), node_of_(node_of), order_(size), lowest_(size) {}

  /// Searches from `start`; what was visited before is not visited again.
  void visit(std::uint32_t start) {
    if (order_[start] != 0) return;
    enter(start);
    while (!way_.empty()) {
      Step& step = way_.back();
      const auto below = successors_(step.node);
      if (step.next == below.size()) {
        leave();
        continue;
      }
      const std::uint32_t node = node_of_(below[step.next++]);
      if (order_[node] == 0) {
        enter(node);
      } else {
        step.leads_to_itself |= node == step.node;
        lower(step.node, order_[node]);
      }
    }
  }

  /// All cycles found so far.
  const std::vector<Cycle>& cycles() const { return cycles_; }

 private:
  struct Step {
    std::uint32_t node;
    bool leads_to_itself;
    std::size_t next;
  };
  /// The order of a node whose cycle is complete: no way leads back to it.
  static constexpr std::uint32_t COMPLETE = UINT32_MAX;

  void enter(std::uint32_t node) {
    order_[node] = ++visited_;
    lowest_[node] = visited_;
    open_.push_back(node);
    way_.push_back({node, false, 0});
  }

  void lower(std::uint32_t node, std::uint32_t order) {
    std::uint32_t& lowest = lowest_[node];
    lowest = std::min(lowest, order);
  }

  void leave() {
    const Step step = way_.back();
    way_.pop_back();
    const std::uint32_t lowest = lowest_[step.node];
    if (lowest == order_[step.node]) {
      close(step);
    } else {
      lower(way_.back().node, lowest);
    }
  }

  /// Takes the nodes of one cycle, of which `first` was entered first, off the open ones.
  void close(const Step& first) {
    Cycle cycle;
    cycle.lowest = first.node;
    std::uint32_t node;
    do {
      node = open_.back();
      open_.pop_back();
      order_[node] = COMPLETE;
      cycle.lowest = std::min(cycle.lowest, node);
      ++cycle.size;
    } while (node != first.node);
    if (cycle.size > 1 || first.leads_to_itself) cycles_.push_back(cycle);
  }

  Successors successors_;
  NodeOf node_of_;
  Column<std::uint32_t> order_;      // by node: when it was entered, 0 for not yet
  Column<std::uint32_t> lowest_;     // by node: the least order that it leads back to
  std::vector<Step> way_;            // from the start to the node that is visited
  std::vector<std::uint32_t> open_;  // entered, and not known to be in no cycle
  std::uint32_t visited_ = 0;
  std::vector<Cycle> cycles_;
};

}  // namespace Kessel
