// Sorts the nodes of two graphs into cells of nodes that may correspond.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "instances/column.h"
#include "sameness/graph.h"

namespace Kessel::Sameness {

/// A partition of the nodes of two graphs into cells, each with as many nodes of one as of the
/// other, so that an isomorphism, if there is one, leads from each cell into itself.
///
/// Refining splits cells whose nodes refer, or are referred to, differently from nodes of another
/// cell, until none is left (colour refinement; each node is looked at as often as its cell
/// halves). Where a cell would be split into parts that are larger on one side, the graphs are not
/// isomorphic, or not by the pairs that were made.
class Partition {
 public:
  /// The first of a cell's places; places run over all nodes.
  using Cell = std::uint32_t;

  /// The graphs must outlive it; as many nodes are in one as in the other.
  Partition(const Graph& a, const Graph& b);

  /// Begins with a cell for each colour. Returns false where one has more nodes on one side. The
  /// colours need not tell nodes apart that their neighbours tell apart.
  bool begin(const Column<std::uint64_t>& a, const Column<std::uint64_t>& b);

  /// Splits cells until none is left to split. False: not isomorphic.
  bool refine();

  /// Puts `a` and `b`, which are in one cell, into a cell of their own; to be refined.
  void pair(Node a, Node b);

  Cell cell(Side side, Node node) const { return sides_[side].cells[node]; }
  std::uint32_t length(Cell cell) const { return lengths_[cell]; }
  std::span<const Node> nodes(Side side, Cell cell) const {
    return sides_[side].nodes.part(cell, std::size_t{cell} + lengths_[cell]);
  }
  bool is_single(Side side, Node node) const { return lengths_[cell(side, node)] == 1; }

  /// To come back to the cells as they are now.
  std::size_t mark() const { return trail_.size(); }
  void go_back(std::size_t mark);

  /// How many edges were looked at.
  std::uint64_t work() const { return work_; }

 private:
  struct OneSide {
    const Graph* graph;
    Column<Node> nodes;            // by place
    Column<std::uint32_t> places;  // by node
    Column<Cell> cells;            // by node
    Column<std::uint64_t> sums;    // by node, of the edges to the cell that splits others; refine()
                                   // makes it
    std::vector<Node> touched;     // those with such edges
  };
  struct Split {
    Cell from;
    Cell part;
  };

  void enqueue(Cell cell);
  void gather(OneSide& side, Cell splitter);
  void add(OneSide& side, std::span<const Edge> edges, std::uint64_t direction);
  bool split_touched();
  void split(Cell cell, std::span<const Node> a, std::span<const Node> b);
  void move_behind(OneSide& side, Cell cell, std::span<const Node> touched);
  void forget_touched();

  OneSide sides_[2];
  Column<std::uint32_t> lengths_;  // by cell
  Column<bool> is_queued_;         // by cell
  std::vector<Cell> queue_;
  std::vector<Split> trail_;
  std::uint64_t work_ = 0;
};

}  // namespace Kessel::Sameness
