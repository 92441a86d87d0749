// Which records of two files that differ correspond to each other.
#pragma once

#include <cstdint>
#include <vector>

#include "instances/column.h"
#include "sameness/compared_file.h"
#include "sameness/graph.h"

namespace Kessel::Sameness {

/// A graph of every record of a file, values included, each as one node, and what is needed to find
/// its like in another file.
struct RecordGraph {
  explicit RecordGraph(const ComparedFile& file);

  const ComparedFile& file;
  Graph graph;
  Column<Node> nodes;           // by record; NO_NODE for a repeated one
  Column<std::uint64_t> types;  // by node: hash of the type's name
  std::uint64_t structure(Node node) const {
    return file.fingerprints.structure[graph.record(node)];
  }
};

/// Pairs of nodes, each in at most one pair.
struct Correspondence {
  Column<Node> to_b;  // by node of A; NO_NODE for none
  Column<Node> to_a;
};

/// Pairs records: first those that say the same with all below them and have no like, then along
/// references from one pair to the next, then ever weaker likeness. Linear but for sorting.
Correspondence find_correspondence(const RecordGraph& a, const RecordGraph& b);

/// How the records that correspond differ.
class Changes {
 public:
  Changes(const RecordGraph& a, const RecordGraph& b, const Correspondence& correspondence)
      : a_(a), b_(b), correspondence_(correspondence) {}

  /// Of A's `node`; NO_NODE for none.
  Node partner(Node node) const { return node == NO_NODE ? NO_NODE : correspondence_.to_b[node]; }
  /// Whether the pair of A's `node` says the same: texts, and what corresponding references lead
  /// to.
  bool is_unchanged(Node node) const;
  /// Whether a reference to A's `x` says the same as one to B's `y`.
  bool is_same(Node x, Node y, int depth = 0) const;

 private:
  const RecordGraph& a_;
  const RecordGraph& b_;
  const Correspondence& correspondence_;
};

}  // namespace Kessel::Sameness
